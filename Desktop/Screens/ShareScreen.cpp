#include "Desktop/Screens/ShareScreen.h"

#include "Desktop/System/FileManager.h"
#include "Platform/UIKit/UIActivityViewController.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>

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
    finish("open", QDesktopServices::openUrl(file()));
}

void ShareScreen::close() {
    finish(nullptr, false);
}

void ShareScreen::finish(const char* activity, bool completed) const {
    if (const auto sheet = controllerAs<UIActivityViewController>())
        sheet->finish(activity ? std::optional<std::string>(activity) : std::nullopt, completed);
}

} // namespace anadrome::desktop
