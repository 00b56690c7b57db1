#include "Tests/Support/ShownNumbers.h"

#include <cmath>

namespace anadrome::testing_support {

std::optional<int> numberShownAt(const VideoFacts& video, std::int64_t time, AVRational unit) {
    std::optional<int> number;
    for (const FrameFacts& frame : video.frames)
        if (av_compare_ts(frame.pts, video.timeBase, time, unit) <= 0)
            number = frame.number;
    return number;
}

std::int64_t durationTicks(const VideoFacts& video) {
    return std::llround(video.durationSeconds / av_q2d(video.timeBase));
}

} // namespace anadrome::testing_support
