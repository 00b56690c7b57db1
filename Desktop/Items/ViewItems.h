#pragma once

#include "Desktop/Items/ViewItem.h"

namespace anadrome::desktop {

/// The item for a view by its kind: a plain one for those without an item of their own. Owned by the parent.
ViewItem* makeViewItem(const std::shared_ptr<UIView>& view, QObject* parent);

} // namespace anadrome::desktop
