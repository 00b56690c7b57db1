#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/UIKit/UIColor.h"

#include <optional>

namespace anadrome {

/// How the edge of a view is drawn. Measures in points.
struct CALayer {
    std::optional<UIColor> borderColor;
    CGFloat borderWidth = 0;
    CGFloat cornerRadius = 0;
    /// Whether what lies in the view is cut off at its edge.
    bool masksToBounds = false;

    friend bool operator==(const CALayer&, const CALayer&) = default;
};

} // namespace anadrome
