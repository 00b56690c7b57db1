#pragma once

#include "Tests/Support/MovieReader.h"

namespace anadrome::testing_support {

/// The number that a track shows at a time, by the exact times of its frames: that of the last frame that
/// doesn't come later.
std::optional<int> numberShownAt(const VideoFacts& video, std::int64_t time, AVRational unit);

/// The length of the track in its own time base.
std::int64_t durationTicks(const VideoFacts& video);

} // namespace anadrome::testing_support
