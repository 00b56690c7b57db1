#include "Desktop/System/Notification.h"

#include "Desktop/System/AskBus.h"
#include "Desktop/Texts.h"

#include <QPointer>

namespace anadrome::desktop {

namespace {

constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto portalInterface = "org.freedesktop.portal.Notification";
constexpr auto portalId = "job";

constexpr auto serverPath = "/org/freedesktop/Notifications";
constexpr auto serverInterface = "org.freedesktop.Notifications";

constexpr auto defaultAction = "default";

QDBusMessage portalCall(const QString& method) {
    return QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", portalPath, portalInterface,
                                          method);
}

QDBusMessage serverCall(const QString& method) {
    return QDBusMessage::createMethodCall(serverInterface, serverPath, serverInterface, method);
}

} // namespace

Notification::Notification() {
    // From anybody: to ask the bus for the sender of that name would take its time.
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect({}, portalPath, portalInterface, "ActionInvoked", this,
                SLOT(portalActionInvoked(QString, QString, QVariantList)));
    bus.connect({}, serverPath, serverInterface, "ActivationToken", this,
                SLOT(activationTokenCame(uint, QString)));
    bus.connect({}, serverPath, serverInterface, "ActionInvoked", this, SLOT(actionInvoked(uint, QString)));
}

void Notification::show(const QString& title, const QString& text) {
    m_shower = Shower::portal;
    QDBusMessage call = portalCall("AddNotification");
    call << portalId << QVariantMap{{"title", title}, {"body", text}, {"default-action", defaultAction}};
    askBus(QDBusConnection::sessionBus(), call,
           [self = QPointer(this), title, text](const QDBusMessage& answer) {
               const bool isRefused = answer.type() == QDBusMessage::ErrorMessage;
               if (self && isRefused && self->m_shower == Shower::portal)
                   self->askServer(title, text);
           });
}

void Notification::askServer(const QString& title, const QString& text) {
    m_shower = Shower::server;
    QDBusMessage call = serverCall("Notify");
    // The server takes the text for markup.
    call << Texts::of("AppName") << m_id << "anadrome" << title << text.toHtmlEscaped()
         << QStringList{defaultAction, Texts::of("Open")} << QVariantMap{{"desktop-entry", "anadrome"}} << -1;
    askBus(QDBusConnection::sessionBus(), call, [self = QPointer(this)](const QDBusMessage& answer) {
        if (self && answer.type() != QDBusMessage::ErrorMessage)
            self->serverAnswered(answer);
    });
}

void Notification::serverAnswered(const QDBusMessage& answer) {
    m_id = answer.arguments().value(0).toUInt();
    if (m_shower == Shower::nobody) {
        m_shower = Shower::server;
        withdraw();
    }
}

void Notification::withdraw() {
    const Shower shower = std::exchange(m_shower, Shower::nobody);
    if (shower == Shower::portal)
        QDBusConnection::sessionBus().send(portalCall("RemoveNotification") << portalId);
    if (shower == Shower::server && m_id != 0)
        QDBusConnection::sessionBus().send(serverCall("CloseNotification") << std::exchange(m_id, 0));
}

void Notification::portalActionInvoked(const QString& id, const QString& action, const QVariantList&) {
    if (id == portalId && action == defaultAction && m_shower == Shower::portal)
        Q_EMIT clicked({});
}

void Notification::activationTokenCame(uint id, const QString& token) {
    if (m_id != 0 && id == m_id)
        m_activationToken = token;
}

void Notification::actionInvoked(uint id, const QString& action) {
    if (m_id != 0 && id == m_id && action == defaultAction)
        Q_EMIT clicked(std::exchange(m_activationToken, {}));
}

} // namespace anadrome::desktop
