#include "Desktop/Items/TableItem.h"

#include "Platform/UIKit/UITableView.h"

#include <QVariantMap>

namespace anadrome::desktop {

QVariantList TableItem::rows() const {
    return ask<UITableView>([](UITableView& table) {
        QVariantList rows;
        for (const auto& [path, cell] : table.cells()) {
            const UIImageRef& image = cell->imageView()->image();
            rows.append(QVariantMap{{"section", static_cast<int>(path.section)},
                                    {"row", static_cast<int>(path.row)},
                                    {"text", QString::fromStdString(cell->textLabel()->text())},
                                    {"symbol", image ? QString::fromStdString(image->systemName()) : ""}});
        }
        return rows;
    });
}

void TableItem::tapRow(int section, int row) {
    act<UITableView>([&](UITableView& table) { table.tapRow({section, row}); });
}

} // namespace anadrome::desktop
