#include "Desktop/System/OtherPrograms.h"

#include "Desktop/System/AskBus.h"

#include <QDBusMetaType>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>

namespace anadrome::desktop {

namespace {

QDBusMessage portalCall(const QString& interface, const QString& method) {
    return QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                          "org.freedesktop.portal." + interface, method);
}

/// Calls a service, which has no parent window to know of.
void call(const QDBusMessage& message, std::function<void(bool isDone)> completion) {
    askBus(QDBusConnection::sessionBus(), message,
           [completion = std::move(completion)](const QDBusMessage& answer) {
               completion(answer.type() != QDBusMessage::ErrorMessage);
           });
}

/// Portals take files opened, since they may live where paths mean something else.
QDBusUnixFileDescriptor opened(const QUrl& file) {
    QFile reading(file.toLocalFile());
    return reading.open(QIODevice::ReadOnly) ? QDBusUnixFileDescriptor(reading.handle())
                                             : QDBusUnixFileDescriptor();
}

void composeByTool(const Mail& mail, std::function<void(bool isOpened)> completion) {
    QStringList arguments{"--utf8", "--subject", mail.subject, "--body", mail.text};
    if (!mail.attachment.isEmpty())
        arguments << "--attach" << mail.attachment.toLocalFile();
    auto* tool = new QProcess;
    QObject::connect(tool, &QProcess::errorOccurred, tool, [tool, completion](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        completion(false);
        tool->deleteLater();
    });
    QObject::connect(tool, &QProcess::finished, tool, [tool, completion](int code, auto status) {
        completion(code == 0 && status == QProcess::NormalExit);
        tool->deleteLater();
    });
    tool->start("xdg-email", arguments + mail.addresses);
}

} // namespace

void showInFileManager(const QUrl& file) {
    QDBusMessage message =
        QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                       "org.freedesktop.FileManager1", "ShowItems");
    message << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
    call(message, [file](bool isDone) {
        if (!isDone)
            QDesktopServices::openUrl(file.adjusted(QUrl::RemoveFilename));
    });
}

void openInOtherProgram(const QUrl& file) {
    QDBusMessage message = portalCall("OpenURI", "OpenFile");
    message << QString() << QVariant::fromValue(opened(file)) << QVariantMap{{"ask", true}};
    call(message, [file](bool isDone) {
        if (!isDone)
            QDesktopServices::openUrl(file);
    });
}

void composeMail(const Mail& mail, std::function<void(bool isOpened)> completion) {
    qDBusRegisterMetaType<QList<QDBusUnixFileDescriptor>>();
    QVariantMap options{{"addresses", mail.addresses}, {"subject", mail.subject}, {"body", mail.text}};
    if (!mail.attachment.isEmpty())
        options["attachment_fds"] =
            QVariant::fromValue(QList<QDBusUnixFileDescriptor>{opened(mail.attachment)});
    QDBusMessage message = portalCall("Email", "ComposeEmail");
    message << QString() << options;
    call(message, [mail, completion = std::move(completion)](bool isDone) {
        if (isDone)
            completion(true);
        else
            composeByTool(mail, completion);
    });
}

} // namespace anadrome::desktop
