#include "Desktop/System/AskBus.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QTimer>

namespace anadrome::desktop {

void askBus(const QDBusConnection& bus, const QDBusMessage& call,
            std::function<void(const QDBusMessage&)> answered) {
    // A call on no bus is never told to be over.
    if (!bus.isConnected()) {
        QTimer::singleShot(0, [answered = std::move(answered)] {
            answered(QDBusMessage::createError(QDBusError::Disconnected, "There is no such bus."));
        });
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [watcher, answered = std::move(answered)] {
                         answered(watcher->reply());
                         watcher->deleteLater();
                     });
}

} // namespace anadrome::desktop
