#include "Desktop/System/OtherPrograms.h"

#include "Desktop/System/AskBus.h"
#include "Desktop/System/PortalRequest.h"

#include <QDBusMetaType>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <chrono>

namespace anadrome::desktop {

namespace {

using namespace std::chrono_literals;

/// Some mail programs keep the tool that starts them waiting as long as they run.
constexpr auto longestStart = 3s;

HandOverOutcome outcomeOf(bool isDone) {
    return isDone ? HandOverOutcome::done : HandOverOutcome::failed;
}

/// What to do with a portal's outcome: where it fails, the other way is gone.
std::function<void(HandOverOutcome)> orElse(std::function<void()> otherWay, HandOverTold told) {
    return [otherWay = std::move(otherWay), told = std::move(told)](HandOverOutcome outcome) {
        if (outcome == HandOverOutcome::failed)
            otherWay();
        else
            told(outcome);
    };
}

/// Portals take files opened, since they may live where paths mean something else.
QDBusUnixFileDescriptor opened(const QUrl& file) {
    QFile reading(file.toLocalFile());
    return reading.open(QIODevice::ReadOnly) ? QDBusUnixFileDescriptor(reading.handle())
                                             : QDBusUnixFileDescriptor();
}

QStringList toolArguments(const Mail& mail) {
    QStringList arguments{"--utf8", "--subject", mail.subject, "--body", mail.text};
    if (!mail.attachment.isEmpty())
        arguments << "--attach" << mail.attachment.toLocalFile();
    return arguments + mail.addresses;
}

void composeByTool(const Mail& mail, HandOverTold told) {
    auto* tool = new QProcess;
    const auto tellOnce = [told = std::move(told), isTold = std::make_shared<bool>(false)](bool isDone) {
        if (!std::exchange(*isTold, true))
            told(outcomeOf(isDone));
    };
    QObject::connect(tool, &QProcess::errorOccurred, tool, [tool, tellOnce](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        tellOnce(false);
        tool->deleteLater();
    });
    QObject::connect(tool, &QProcess::finished, tool, [tool, tellOnce](int code, auto status) {
        tellOnce(code == 0 && status == QProcess::NormalExit);
        tool->deleteLater();
    });
    QTimer::singleShot(longestStart, tool, [tellOnce] { tellOnce(true); });
    tool->start("xdg-email", toolArguments(mail));
}

} // namespace

void showInFileManager(const QUrl& file, HandOverTold told) {
    QDBusMessage message =
        QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                       "org.freedesktop.FileManager1", "ShowItems");
    message << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
    askBus(QDBusConnection::sessionBus(), message,
           [file, told = std::move(told)](const QDBusMessage& answer) {
               told(outcomeOf(answer.type() != QDBusMessage::ErrorMessage ||
                              QDesktopServices::openUrl(file.adjusted(QUrl::RemoveFilename))));
           });
}

void openInOtherProgram(const QUrl& file, HandOverTold told) {
    PortalRequest::send("OpenURI", "OpenFile", {QVariant::fromValue(opened(file))}, {{"ask", true}},
                        orElse([file, told] { told(outcomeOf(QDesktopServices::openUrl(file))); }, told));
}

void composeMail(const Mail& mail, HandOverTold told) {
    qDBusRegisterMetaType<QList<QDBusUnixFileDescriptor>>();
    QVariantMap options{{"addresses", mail.addresses}, {"subject", mail.subject}, {"body", mail.text}};
    if (!mail.attachment.isEmpty())
        options["attachment_fds"] =
            QVariant::fromValue(QList<QDBusUnixFileDescriptor>{opened(mail.attachment)});
    PortalRequest::send("Email", "ComposeEmail", {}, options,
                        orElse([mail, told] { composeByTool(mail, told); }, told));
}

} // namespace anadrome::desktop
