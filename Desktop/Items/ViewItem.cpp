#include "Desktop/Items/ViewItem.h"

#include <cmath>

namespace anadrome::desktop {

bool ViewItem::isShown() const {
    return ask<UIView>([](UIView& view) { return !view.isHidden(); });
}

double ViewItem::alpha() const {
    return ask<UIView>([](UIView& view) { return view.alpha(); });
}

void ViewItem::noteChange(double seconds) {
    m_duration = static_cast<int>(std::lround(seconds * 1000));
    Q_EMIT changed();
}

} // namespace anadrome::desktop
