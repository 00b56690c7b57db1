#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/Foundation/Result.h"

#include <vector>

namespace anadrome::libav {

/// What a file says of its decodable sound and video tracks, in the file's order. Cover pictures, thumbnails,
/// timed metadata and tracks without a decoder are passed over. Durations, rates and sample counts come from
/// the index where the file has a whole one, and from a pass over all packets where it hasn't (fragments,
/// other containers).
Result<std::vector<AVAssetTrack::Facts>> readTrackFacts(const URL& url);

} // namespace anadrome::libav
