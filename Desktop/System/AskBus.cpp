#include "Desktop/System/AskBus.h"

#include <QDBusPendingCallWatcher>

namespace anadrome::desktop {

void askBus(const QDBusConnection& bus, const QDBusMessage& call,
            std::function<void(const QDBusMessage&)> answered) {
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [watcher, answered = std::move(answered)] {
                         answered(watcher->reply());
                         watcher->deleteLater();
                     });
}

} // namespace anadrome::desktop
