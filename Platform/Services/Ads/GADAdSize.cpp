#include "Platform/Services/Ads/GADAdSize.h"

#include "Platform/UIKit/UIScreen.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

namespace {

CGFloat roundedHalfUp(CGFloat value) {
    return std::floor(value + 0.5);
}

/// In the proportions of the common banner that is nearest: 728 × 90, 468 × 60 or 320 × 50.
CGFloat proportionalHeight(CGFloat width) {
    if (width > 655)
        return roundedHalfUp(width * 90 / 728);
    if (width > 632)
        return 81;
    if (width > 526)
        return roundedHalfUp(width * 60 / 468);
    if (width > 432)
        return 68;
    return roundedHalfUp(width * 50 / 320);
}

} // namespace

GADAdSize GADCurrentOrientationAnchoredAdaptiveBannerAdSizeWithWidth(CGFloat width) {
    if (!(width > 0))
        return {};
    const CGFloat share = roundedHalfUp(UIScreen::mainScreen().bounds().size.height * 0.15);
    const CGFloat height = std::min({proportionalHeight(width), share, 90.0});
    return {{width, std::max(height, 50.0)}};
}

} // namespace anadrome
