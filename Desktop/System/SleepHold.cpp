#include "Desktop/System/SleepHold.h"

#include "Desktop/System/AskBus.h"
#include "Desktop/Texts.h"

#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>

namespace anadrome::desktop {

namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr uint suspend = 4;
constexpr uint idle = 8;

QString reason() {
    return Texts::of("MovieIsBeingMade");
}

} // namespace

struct SleepHold::Grip {
    Grip() = default;
    Grip(const Grip&) = delete;
    Grip& operator=(const Grip&) = delete;
    ~Grip() {
        if (!request.path().isEmpty())
            QDBusConnection::sessionBus().send(QDBusMessage::createMethodCall(
                portal, request.path(), "org.freedesktop.portal.Request", "Close"));
    }

    /// The portal's.
    QDBusObjectPath request;
    /// The login manager's, which lasts until it is closed.
    QDBusUnixFileDescriptor lock;
};

SleepHold::SleepHold() : m_grip(std::make_shared<Grip>()) {
    QDBusMessage call = QDBusMessage::createMethodCall(portal, "/org/freedesktop/portal/desktop",
                                                       "org.freedesktop.portal.Inhibit", "Inhibit");
    call << QString() << (suspend | idle) << QVariantMap{{"reason", reason()}};
    askBus(QDBusConnection::sessionBus(), call, [grip = m_grip](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ErrorMessage)
            askLoginManager(grip);
        else
            grip->request = answer.arguments().value(0).value<QDBusObjectPath>();
    });
}

void SleepHold::askLoginManager(std::shared_ptr<Grip> grip) {
    QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.login1", "/org/freedesktop/login1",
                                                       "org.freedesktop.login1.Manager", "Inhibit");
    call << "sleep:idle" << Texts::of("AppName") << reason() << "block";
    askBus(QDBusConnection::systemBus(), call, [grip = std::move(grip)](const QDBusMessage& answer) {
        grip->lock = answer.arguments().value(0).value<QDBusUnixFileDescriptor>();
    });
}

} // namespace anadrome::desktop
