#include "Desktop/System/PortalRequest.h"

#include "Desktop/System/AskBus.h"

#include <QDBusObjectPath>
#include <QPointer>

namespace anadrome::desktop {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";

/// Where the outcome will be told, which is to be listened to before the question is asked. As the portals'
/// documentation of Request has it.
QString pathFor(const QString& token) {
    QString sender = QDBusConnection::sessionBus().baseService().mid(1);
    return "/org/freedesktop/portal/desktop/request/" + sender.replace('.', '_') + '/' + token;
}

QString newToken() {
    static int count = 0;
    return QString("anadrome%1").arg(++count);
}

} // namespace

PortalRequest::PortalRequest(HandOverTold told) : m_told(std::move(told)) {}

void PortalRequest::send(const QString& portal, const QString& method, const QVariantList& arguments,
                         QVariantMap options, HandOverTold told) {
    const QString token = newToken();
    options["handle_token"] = token;
    QDBusMessage call = QDBusMessage::createMethodCall(service, "/org/freedesktop/portal/desktop",
                                                       "org.freedesktop.portal." + portal, method);
    call.setArguments(QVariantList{QString()} + arguments + QVariantList{options});
    auto* request = new PortalRequest(std::move(told));
    request->listenAt(pathFor(token));
    askBus(QDBusConnection::sessionBus(), call, [request = QPointer(request)](const QDBusMessage& answer) {
        if (request)
            request->answered(answer);
    });
}

void PortalRequest::listenAt(const QString& path) {
    m_path = path;
    QDBusConnection::sessionBus().connect(service, path, "org.freedesktop.portal.Request", "Response", this,
                                          SLOT(respond(uint)));
}

void PortalRequest::answered(const QDBusMessage& answer) {
    if (answer.type() == QDBusMessage::ErrorMessage)
        return end(HandOverOutcome::failed);
    // Portals of old choose the path themselves.
    const QString path = answer.arguments().value(0).value<QDBusObjectPath>().path();
    if (!path.isEmpty() && path != m_path)
        listenAt(path);
}

void PortalRequest::respond(uint code) {
    end(code == 0 ? HandOverOutcome::done : code == 1 ? HandOverOutcome::cancelled : HandOverOutcome::failed);
}

void PortalRequest::end(HandOverOutcome outcome) {
    deleteLater();
    if (const auto told = std::exchange(m_told, nullptr))
        told(outcome);
}

} // namespace anadrome::desktop
