#include "Platform/UIKit/UITableView.h"

#include "Platform/Foundation/Print.h"

#include <utility>

namespace anadrome {

namespace {

constexpr double deselectionSeconds = 0.25;

} // namespace

void UITableView::registerCell(const std::string& identifier,
                               std::function<std::shared_ptr<UITableViewCell>()> make) {
    m_kinds[identifier] = std::move(make);
}

std::shared_ptr<UITableViewCell> UITableView::dequeueReusableCellWithIdentifier(const std::string& identifier,
                                                                                const NSIndexPath&) const {
    const auto kind = m_kinds.find(identifier);
    if (kind == m_kinds.end())
        fatalError("The table has no cell named " + identifier);
    return kind->second();
}

void UITableView::reloadData() {
    for (const auto& [path, cell] : std::exchange(m_cells, {}))
        cell->removeFromSuperview();
    const auto source = m_dataSource.lock();
    if (!source)
        return noteChange();
    const long sections = source->numberOfSectionsInTableView(*this);
    for (NSIndexPath path; path.section < sections; ++path.section) {
        const long rows = source->numberOfRowsInSection(*this, path.section);
        for (path.row = 0; path.row < rows; ++path.row) {
            const auto cell = source->cellForRowAtIndexPath(*this, path);
            addSubview(cell);
            m_cells[path] = cell;
        }
    }
    noteChange();
}

void UITableView::deselectRowAtIndexPath(const NSIndexPath& path, bool animated) {
    const auto cell = m_cells.find(path);
    if (cell != m_cells.end())
        animateWithDuration(animated ? deselectionSeconds : 0, [&] { cell->second->setSelected(false); });
}

void UITableView::tapRow(const NSIndexPath& path) {
    const auto cell = m_cells.find(path);
    if (cell == m_cells.end() || !canBeTouched())
        return;
    for (const auto& [other, otherCell] : m_cells)
        otherCell->setSelected(other == path);
    if (const auto delegate = m_delegate.lock())
        delegate->didSelectRowAtIndexPath(*this, path);
}

} // namespace anadrome
