#include "Desktop/Library/LibraryLines.h"

#include "Desktop/Texts.h"

#include <algorithm>

namespace anadrome::desktop {

void LibraryLines::setMovies(std::vector<FoundMovie> movies, ThumbnailQueue& thumbnails) {
    beginResetModel();
    for (LibraryClip* clip : m_clips)
        clip->deleteLater();
    m_clips.clear();
    for (FoundMovie& movie : movies)
        m_clips.push_back(
            new LibraryClip(static_cast<int>(m_clips.size()), std::move(movie), thumbnails, this));
    m_current = 0;
    layOut();
    endResetModel();
    Q_EMIT currentChanged();
}

void LibraryLines::setColumns(int columns) {
    if (columns == m_columns || columns < 1)
        return;
    beginResetModel();
    m_columns = columns;
    layOut();
    endResetModel();
    Q_EMIT columnsChanged();
}

void LibraryLines::layOut() {
    m_lines.clear();
    QDate month;
    for (const LibraryClip* clip : m_clips) {
        const QDate day = clip->day();
        const QDate itsMonth(day.year(), day.month(), 1);
        if (itsMonth != month)
            m_lines.push_back({Texts::month(day), clip->row(), 0});
        else if (m_lines.back().count == m_columns)
            m_lines.push_back({{}, clip->row(), 0});
        month = itsMonth;
        ++m_lines.back().count;
    }
}

int LibraryLines::lineOf(int row) const {
    const auto next = std::ranges::upper_bound(m_lines, row, {}, &Line::first);
    return static_cast<int>(next - m_lines.begin()) - 1;
}

int LibraryLines::firstOf(int line) const {
    const bool isThere = line >= 0 && line < rowCount();
    return isThere ? m_lines[static_cast<std::size_t>(line)].first : -1;
}

void LibraryLines::moveTo(int row) {
    if (m_clips.empty())
        return;
    m_current = std::clamp(row, 0, static_cast<int>(m_clips.size()) - 1);
    Q_EMIT currentChanged();
}

void LibraryLines::moveByLines(int lines) {
    if (m_clips.empty())
        return;
    const int from = lineOf(m_current);
    const int onto = std::clamp(from + lines, 0, static_cast<int>(m_lines.size()) - 1);
    const int column = m_current - m_lines[static_cast<std::size_t>(from)].first;
    const Line& line = m_lines[static_cast<std::size_t>(onto)];
    moveTo(line.first + std::min(column, line.count - 1));
}

int LibraryLines::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant LibraryLines::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Line& line = m_lines[static_cast<std::size_t>(index.row())];
    if (role == headingRole)
        return line.heading;
    if (role != clipsRole)
        return {};
    const auto first = m_clips.begin() + line.first;
    return QVariant::fromValue(QList<QObject*>(first, first + line.count));
}

QHash<int, QByteArray> LibraryLines::roleNames() const {
    return {{headingRole, "heading"}, {clipsRole, "clips"}};
}

} // namespace anadrome::desktop
