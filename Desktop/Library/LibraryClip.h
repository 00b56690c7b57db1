#pragma once

#include "Desktop/Library/FindMovies.h"
#include "Desktop/Library/ThumbnailQueue.h"

#include <QObject>
#include <QUrl>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// A clip in the library, as a cell shows it. What has to be read from the file comes once a cell asks. Main
/// thread only.
class LibraryClip : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the library")
    /// Its place among all clips, from zero.
    Q_PROPERTY(int row READ row CONSTANT)
    /// The file's.
    Q_PROPERTY(QString name READ name CONSTANT)
    /// "1:05"; empty while it isn't known.
    Q_PROPERTY(QString length READ length NOTIFY changed)
    /// A picture file; empty while there is none.
    Q_PROPERTY(QUrl thumbnail READ thumbnail NOTIFY changed)
    /// It can't be decoded.
    Q_PROPERTY(bool broken READ isBroken NOTIFY changed)

public:
    /// The queue lives as long as the clip.
    LibraryClip(int row, FoundMovie movie, ThumbnailQueue& thumbnails, QObject* parent)
        : QObject(parent), m_row(row), m_movie(std::move(movie)), m_thumbnails(thumbnails) {}

    int row() const { return m_row; }
    const URL& file() const { return m_movie.file; }
    /// Of the last change to the file, where the user is.
    QDate day() const;
    QString name() const;
    QString length() const;
    QUrl thumbnail() const;
    bool isBroken() const { return m_thumbnail.isBroken; }

    /// A cell shows the clip from now on, or no longer.
    Q_INVOKABLE void see();
    Q_INVOKABLE void leave();

Q_SIGNALS:
    void changed();

private:
    const int m_row;
    const FoundMovie m_movie;
    ThumbnailQueue& m_thumbnails;
    bool m_hasAsked = false;
    Thumbnail m_thumbnail;
};

} // namespace anadrome::desktop
