#include "Platform/AVFoundation/Capture/CameraMode.h"

#include <algorithm>
#include <tuple>

namespace anadrome::capture {

namespace {

/// 30 in the rates of television.
constexpr double fluentRate = 29.5;

/// Greater is better, from the first entry on.
auto worth(const CameraMode& mode) {
    const bool isFluent = mode.pictureRate >= fluentRate;
    const bool canBeEncoded = mode.width <= 1920 && mode.height <= 1080;
    return std::tuple(canBeEncoded, isFluent, isFluent ? 0 : mode.pictureRate, mode.width * mode.height,
                      mode.format != "mjpeg", -mode.pictureRate);
}

} // namespace

std::optional<CameraMode> bestMode(const std::vector<CameraMode>& modes) {
    const auto best = std::ranges::max_element(modes, {}, worth);
    return best == modes.end() ? std::nullopt : std::optional(*best);
}

} // namespace anadrome::capture
