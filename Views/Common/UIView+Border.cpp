#include "Views/Common/UIView+Border.h"

namespace anadrome {

void setBorderColor(UIView& view, std::optional<UIColor> color) {
    CALayer layer = view.layer();
    layer.borderColor = color;
    view.setLayer(layer);
}

void setBorderWidth(UIView& view, CGFloat width) {
    CALayer layer = view.layer();
    layer.borderWidth = width;
    view.setLayer(layer);
}

void setCornerRadius(UIView& view, CGFloat radius) {
    CALayer layer = view.layer();
    layer.cornerRadius = radius;
    layer.masksToBounds = radius > 0;
    view.setLayer(layer);
}

} // namespace anadrome
