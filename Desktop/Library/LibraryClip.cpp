#include "Desktop/Library/LibraryClip.h"

#include "Desktop/Texts.h"

#include <QDateTime>
#include <utility>

namespace anadrome::desktop {

QDate LibraryClip::day() const {
    return QDateTime::fromSecsSinceEpoch(m_movie.modified).date();
}

QString LibraryClip::name() const {
    return QString::fromStdString(file().lastPathComponent());
}

QString LibraryClip::length() const {
    return m_thumbnail.seconds ? Texts::length(*m_thumbnail.seconds) : QString();
}

QUrl LibraryClip::thumbnail() const {
    return m_thumbnail.picture.isEmpty() ? QUrl() : QUrl::fromLocalFile(m_thumbnail.picture);
}

void LibraryClip::see() {
    if (std::exchange(m_hasAsked, true))
        return;
    m_thumbnails.ask(file(), [this](const Thumbnail& thumbnail) {
        m_thumbnail = thumbnail;
        Q_EMIT changed();
    });
}

void LibraryClip::leave() {
    if (m_thumbnails.giveUp(file()))
        m_hasAsked = false;
}

} // namespace anadrome::desktop
