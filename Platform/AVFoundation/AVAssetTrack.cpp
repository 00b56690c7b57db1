#include "Platform/AVFoundation/AVAssetTrack.h"

namespace anadrome {

std::vector<AVAssetTrackSegment> AVAssetTrack::segments() const {
    const CMTimeRange& range = timeRange();
    std::vector<AVAssetTrackSegment> segments;
    if (CMTimeCompare(range.start, kCMTimeZero) > 0)
        segments.push_back({nullptr, {kCMTimeRangeInvalid, CMTimeRangeMake(kCMTimeZero, range.start)}});
    segments.push_back({shared_from_this(), {range, range}});
    return segments;
}

} // namespace anadrome
