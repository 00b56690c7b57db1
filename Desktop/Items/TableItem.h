#pragma once

#include "Desktop/Items/ViewItem.h"

#include <QVariantList>

namespace anadrome::desktop {

/// Rows in sections.
class TableItem : public ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    /// From top to bottom, each with "section", "row", "text" and "symbol".
    Q_PROPERTY(QVariantList rows READ rows NOTIFY changed)

public:
    using ViewItem::ViewItem;

    QVariantList rows() const;
    Q_INVOKABLE void tapRow(int section, int row);
};

} // namespace anadrome::desktop
