#include "Desktop/System/ClipboardFile.h"

#include <QDir>
#include <QFileInfo>

namespace anadrome::desktop {

namespace {

/// Some file managers have a form of their own: what to do with the files, then an address a line.
QUrl firstOfFileManager(const QMimeData& copied) {
    const QList<QByteArray> lines = copied.data("x-special/gnome-copied-files").split('\n');
    return lines.size() > 1 ? QUrl::fromEncoded(lines[1].trimmed()) : QUrl();
}

QUrl fileNamed(QString text) {
    if (text.startsWith("file:"))
        return QUrl(text);
    if (text.startsWith("~/"))
        text.replace(0, 1, QDir::homePath());
    return text.startsWith('/') && QFileInfo::exists(text) ? QUrl::fromLocalFile(text) : QUrl();
}

} // namespace

QUrl fileOnClipboard(const QMimeData& copied) {
    if (const QList<QUrl> urls = copied.urls(); !urls.isEmpty())
        return urls.first();
    if (const QUrl url = firstOfFileManager(copied); !url.isEmpty())
        return url;
    return fileNamed(copied.text().trimmed());
}

} // namespace anadrome::desktop
