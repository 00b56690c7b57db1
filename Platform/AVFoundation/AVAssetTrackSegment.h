#pragma once

#include "Platform/CoreMedia/CMTimeRange.h"

#include <memory>

namespace anadrome {

class AVAssetTrack;

/// A stretch of a track: a stretch of a file's track, shown at the rate of the two durations, or nothing.
struct AVAssetTrackSegment {
    /// The track of a file; null for an empty stretch.
    std::shared_ptr<const AVAssetTrack> source;
    /// From the source's time to the time of the track that the segment is part of. An empty stretch has no
    /// source range.
    CMTimeMapping timeMapping;

    bool isEmpty() const { return !source; }
};

} // namespace anadrome
