#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Libav/InputFile.h"

#include <vector>

namespace anadrome::libav {

/// What a file says of its decodable sound and video tracks, in the file's order. The URL is the file's.
/// Cover pictures, thumbnails, timed metadata and tracks without a decoder are passed over. Durations, rates
/// and sample counts come from the index where the file has a whole one, and from a pass over all packets
/// where it hasn't (fragments, other containers).
std::vector<AVAssetTrack::Facts> readTrackFacts(InputFile& file, const URL& url);

} // namespace anadrome::libav
