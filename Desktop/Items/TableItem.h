#pragma once

#include "Desktop/Items/ViewItem.h"
#include "Platform/UIKit/UITableView.h"

#include <vector>

namespace anadrome::desktop {

/// What a row shows, and where it is.
class TableRow {
    Q_GADGET
    QML_VALUE_TYPE(tableRow)
    Q_PROPERTY(int section MEMBER section CONSTANT)
    Q_PROPERTY(int row MEMBER row CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)

public:
    int section = 0;
    int row = 0;
    QString text;
    /// The name of an icon; empty for none.
    QString symbol;
};

/// Rows in sections.
class TableItem : public anadrome::desktop::ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")

public:
    TableItem(const std::shared_ptr<UITableView>& view, QObject* parent) : ViewItem(view, parent) {}

    /// From top to bottom.
    std::vector<TableRow> rows() const;
    Q_INVOKABLE void tapRow(int section, int row);
};

} // namespace anadrome::desktop
