#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"

namespace anadrome {

/// The size of a banner, in points.
struct GADAdSize {
    CGSize size;

    bool isValid() const { return size.width > 0 && size.height > 0; }
};

/// The size of a banner that stays at an edge of the screen, of that width and of a height that suits the
/// screen as it is now. Invalid for a width of 0 or less. Main thread only.
GADAdSize GADCurrentOrientationAnchoredAdaptiveBannerAdSizeWithWidth(CGFloat width);

} // namespace anadrome
