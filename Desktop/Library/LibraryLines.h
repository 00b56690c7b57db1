#pragma once

#include "Desktop/Library/LibraryClip.h"

#include <QAbstractListModel>

namespace anadrome::desktop {

/// The library's grid as a list of lines, so that only those on the screen need to exist. A month begins a
/// line; its name, "heading", stands over the first of its lines, and "clips" are a line's cells. Keeps the
/// clip that the keyboard is at. Main thread only.
class LibraryLines : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the library")
    /// How many cells a line has room for.
    Q_PROPERTY(int columns READ columns WRITE setColumns NOTIFY columnsChanged)
    /// The clip that the keyboard is at; -1 without clips.
    Q_PROPERTY(int current READ current NOTIFY currentChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    /// In their order, and in place of those before. The queue lives as long as this.
    void setMovies(std::vector<FoundMovie> movies, ThumbnailQueue& thumbnails);
    const std::vector<LibraryClip*>& clips() const { return m_clips; }

    int columns() const { return m_columns; }
    void setColumns(int columns);

    int current() const { return m_clips.empty() ? -1 : m_current; }
    /// The line that a clip is in; -1 without clips.
    Q_INVOKABLE int lineOf(int row) const;
    /// The first clip of a line; -1 for a line that there isn't.
    Q_INVOKABLE int firstOf(int line) const;
    /// Each stops at the first and at the last clip.
    Q_INVOKABLE void moveTo(int row);
    Q_INVOKABLE void moveToEnd() { moveTo(static_cast<int>(m_clips.size()) - 1); }
    Q_INVOKABLE void moveBy(int rows) { moveTo(m_current + rows); }
    /// Up or down in its column, or to the last clip of a line that is shorter.
    Q_INVOKABLE void moveByLines(int lines);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void columnsChanged();
    void currentChanged();

private:
    struct Line {
        QString heading;
        int first = 0;
        int count = 0;
    };
    enum Role { headingRole = Qt::UserRole, clipsRole };

    void layOut();

    std::vector<LibraryClip*> m_clips;
    std::vector<Line> m_lines;
    int m_columns = 3;
    int m_current = 0;
};

} // namespace anadrome::desktop
