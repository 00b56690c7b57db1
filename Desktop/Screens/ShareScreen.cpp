#include "Desktop/Screens/ShareScreen.h"

#include "Desktop/System/CopyReplacing.h"
#include "Desktop/System/OtherPrograms.h"
#include "Desktop/Texts.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/MessageUI/MFMailComposeViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Views/Common/ViewHelper.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>

namespace anadrome::desktop {

QString ShareScreen::text() const {
    QStringList lines;
    if (const auto sheet = controllerAs<UIActivityViewController>())
        for (const auto& item : sheet->activityItems()) {
            if (const auto* text = std::get_if<std::string>(&item))
                lines.append(QString::fromStdString(*text));
            else if (const auto* link = std::get_if<WebLink>(&item))
                lines.append(QString::fromStdString(link->address));
        }
    return lines.join('\n');
}

QUrl ShareScreen::file() const {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        for (const auto& item : sheet->activityItems())
            if (const auto* file = std::get_if<URL>(&item))
                return QUrl::fromLocalFile(QString::fromStdString(file->path()));
    return {};
}

void ShareScreen::copyText() {
    QGuiApplication::clipboard()->setText(text());
    finish("copyText", true);
}

void ShareScreen::copyFile() {
    auto* data = new QMimeData;
    data->setUrls({file()});
    // File managers ask for this, to tell a copy from a move.
    data->setData("x-special/gnome-copied-files", "copy\n" + file().toEncoded());
    QGuiApplication::clipboard()->setMimeData(data);
    finish("copyFile", true);
}

void ShareScreen::showInFileManager() {
    desktop::showInFileManager(file());
    finish("showInFileManager", true);
}

void ShareScreen::openWithOtherProgram() {
    openInOtherProgram(file());
    finish("open", true);
}

bool ShareScreen::canMail() const {
    return MFMailComposeViewController::canSendMail();
}

void ShareScreen::mail() {
    const Mail mail{.subject = Texts::of("AppName"), .text = text(), .attachment = file()};
    composeMail(mail, [self = QPointer(this)](bool isOpened) {
        if (!self)
            return;
        if (isOpened)
            self->finish("mail", true);
        else
            self->showError(NSLocalizedString("FailedToOpenMail"));
    });
}

void ShareScreen::saveCopy(const QUrl& place) {
    if (m_isCopying || !place.isLocalFile())
        return;
    setCopying(true);
    const auto urlOf = [](const QUrl& url) { return URL::fileURLWithPath(url.toLocalFile().toStdString()); };
    DispatchQueue::global(QualityOfService::userInitiated)
        .async([self = QPointer(this), from = urlOf(file()), to = urlOf(place)] {
            const auto error = copyReplacing(from, to);
            DispatchQueue::main().async([self, error] {
                if (!self)
                    return;
                self->setCopying(false);
                if (error)
                    self->showError(error->localizedDescription());
                else
                    self->finish("saveCopy", true);
            });
        });
}

void ShareScreen::setCopying(bool isCopying) {
    m_isCopying = isCopying;
    Q_EMIT copyingChanged();
}

void ShareScreen::showError(const std::string& message) const {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        ViewHelper::errorAlert(message, *sheet);
}

void ShareScreen::close() {
    finish(nullptr, false);
}

void ShareScreen::finish(const char* activity, bool completed) const {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        sheet->finish(activity ? std::optional<std::string>(activity) : std::nullopt, completed);
}

} // namespace anadrome::desktop
