#pragma once

#include "Platform/UIKit/UIView.h"

namespace anadrome {

// The edge of a view, for storyboards. Widths and radii in points.

inline std::optional<UIColor> borderColor(const UIView& view) {
    return view.layer().borderColor;
}
inline CGFloat borderWidth(const UIView& view) {
    return view.layer().borderWidth;
}
inline CGFloat cornerRadius(const UIView& view) {
    return view.layer().cornerRadius;
}

void setBorderColor(UIView& view, std::optional<UIColor> color);
void setBorderWidth(UIView& view, CGFloat width);
/// With a radius above 0 the view also cuts off what lies in it; with 0 it no longer does.
void setCornerRadius(UIView& view, CGFloat radius);

} // namespace anadrome
