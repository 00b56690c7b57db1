#include "Platform/AVFoundation/Playback/ShownSize.h"

#include <algorithm>
#include <cmath>

namespace anadrome::playback {

namespace {

constexpr int steps = 8;

std::int32_t side(std::int32_t stored, int step) {
    if (step == steps)
        return stored;
    return std::max(2, static_cast<std::int32_t>(std::lround(stored * step / (2.0 * steps))) * 2);
}

} // namespace

CMVideoDimensions shownSize(const AVAssetTrack& track, CGSize surface) {
    const CGSize upright = CGSizeApplyAffineTransform(track.naturalSize(), track.preferredTransform());
    const double fit =
        std::min(surface.width / std::abs(upright.width), surface.height / std::abs(upright.height));
    const int step =
        std::isfinite(fit) ? static_cast<int>(std::ceil(std::clamp(fit, 0.0, 1.0) * steps)) : steps;
    const CMVideoDimensions stored = track.formatDescriptions().front()->dimensions;
    return {side(stored.width, std::max(step, 1)), side(stored.height, std::max(step, 1))};
}

} // namespace anadrome::playback
