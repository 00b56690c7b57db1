#include "Desktop/Items/TableItem.h"

namespace anadrome::desktop {

std::vector<TableRow> TableItem::rows() const {
    return ask<UITableView>([](UITableView& table) {
        std::vector<TableRow> rows;
        for (const auto& [path, cell] : table.cells()) {
            const UIImageRef& image = cell->imageView()->image();
            rows.push_back({static_cast<int>(path.section), static_cast<int>(path.row),
                            QString::fromStdString(cell->textLabel()->text()),
                            image ? QString::fromStdString(image->systemName()) : QString()});
        }
        return rows;
    });
}

void TableItem::tapRow(int section, int row) {
    act<UITableView>([&](UITableView& table) { table.tapRow({section, row}); });
}

} // namespace anadrome::desktop
