#include "Desktop/Screens/ShareScreen.h"

#include "Desktop/System/CopyReplacing.h"
#include "Desktop/System/FileAddress.h"
#include "Desktop/System/OtherPrograms.h"
#include "Desktop/System/SharedFile.h"
#include "Desktop/Texts.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/UserFolders.h"
#include "Platform/MessageUI/MFMailComposeViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Views/Common/ViewHelper.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>

namespace anadrome::desktop {

ShareScreen::ShareScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
    : ShownScreen(controller, std::move(kind), parent) {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        for (const auto& item : sheet->activityItems())
            if (const auto* file = std::get_if<URL>(&item); file && m_file.empty())
                m_file = sharedFile(*file);
}

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
    return m_file.empty() ? QUrl() : addressOf(m_file);
}

QUrl ShareScreen::usualPlace() const {
    const URL videos = URL::fileURLWithPath(userVideosFolder());
    return m_file.empty() ? QUrl() : addressOf(videos.appendingPathComponent(m_file.lastPathComponent()));
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
    if (!m_isBusy)
        desktop::showInFileManager(file(), outcomeOf("showInFileManager", "FailedToShowFolder"));
}

void ShareScreen::openWithOtherProgram() {
    if (!m_isBusy)
        openInOtherProgram(file(), outcomeOf("open", "FailedToOpenElsewhere"));
}

bool ShareScreen::canMail() const {
    return MFMailComposeViewController::canSendMail();
}

void ShareScreen::mail() {
    if (!m_isBusy)
        composeMail({.subject = Texts::of("AppName"), .text = text(), .attachment = file()},
                    outcomeOf("mail", "FailedToOpenMail"));
}

HandOverTold ShareScreen::outcomeOf(const char* activity, const char* failureKey) {
    setBusy(true);
    return [self = QPointer(this), activity, failureKey](HandOverOutcome outcome) {
        if (!self)
            return;
        self->setBusy(false);
        if (outcome == HandOverOutcome::done)
            self->finish(activity, true);
        else if (outcome == HandOverOutcome::failed)
            self->showError(NSLocalizedString(failureKey));
    };
}

void ShareScreen::saveCopy(const QUrl& place) {
    if (m_isBusy)
        return;
    const std::optional<URL> target = fileAt(place);
    if (!target || isTemporary(*target))
        return showError(NSLocalizedString("CopyCannotGoThere"));
    setBusy(true, true);
    DispatchQueue::global(QualityOfService::userInitiated)
        .async([self = QPointer(this), from = m_file, to = *target] {
            DispatchQueue::main().async([self, error = copyReplacing(from, to)] {
                if (self)
                    self->copied(error);
            });
        });
}

void ShareScreen::copied(const std::optional<NSError>& error) {
    setBusy(false);
    if (error)
        showError(error->localizedDescription());
    else
        finish("saveCopy", true);
}

void ShareScreen::setBusy(bool isBusy, bool isCopying) {
    m_isBusy = isBusy;
    m_isCopying = isCopying;
    Q_EMIT busyChanged();
}

void ShareScreen::showError(const std::string& message) const {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        ViewHelper::errorAlert(message, *sheet);
}

void ShareScreen::close() {
    if (!m_isCopying)
        finish(nullptr, false);
}

void ShareScreen::finish(const char* activity, bool completed) const {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        sheet->finish(activity ? std::optional<std::string>(activity) : std::nullopt, completed);
}

} // namespace anadrome::desktop
