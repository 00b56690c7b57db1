#include "Desktop/Items/ViewItem.h"

#include <cmath>

namespace anadrome::desktop {

bool ViewItem::isShown() const {
    return ask<UIView>([](UIView& view) { return !view.isHidden(); });
}

double ViewItem::alpha() const {
    return ask<UIView>([](UIView& view) { return view.alpha(); });
}

double ViewItem::bottomDistance() const {
    return ask<UIView>([](UIView& view) -> double {
        const auto around = view.superview();
        if (around)
            for (const auto& constraint : around->constraints())
                if (constraint->secondItem().get() == &view &&
                    constraint->secondAttribute() == NSLayoutAttribute::bottom)
                    return constraint->constant();
        return 0;
    });
}

void ViewItem::noteChange(double seconds) {
    m_duration = static_cast<int>(std::lround(seconds * 1000));
    Q_EMIT changed();
}

} // namespace anadrome::desktop
