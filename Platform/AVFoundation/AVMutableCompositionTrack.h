#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/Foundation/NSError.h"

#include <optional>

namespace anadrome {

/// A track put together from stretches of files' tracks. They lie end to end from zero, with empty stretches
/// between them where nothing was put. Its transform is the identity, whatever its sources'.
class AVMutableCompositionTrack final : public AVAssetTrack {
public:
    AVMutableCompositionTrack(AVMediaType mediaType, int trackID);

    /// Puts a stretch of a file's track of the same medium at the time, at its natural rate; what lay there
    /// and behind it moves back. An invalid time is the track's end; one beyond the end leaves an empty
    /// stretch before. A range that reaches beyond what the source has is kept as it is: there its last
    /// picture stays on screen and its sound is silent, so that picture and sound of one clip keep in step
    /// when both are scaled. An invalid or empty range, one that has nothing of the source, another medium
    /// and a track that is itself composed are errors, which change nothing.
    std::optional<NSError> insertTimeRange(const CMTimeRange& range, const AVAssetTrackRef& ofTrack,
                                           const CMTime& atTime);

    /// Stretches or squeezes what lies in the range to the duration; what comes after moves along. A duration
    /// of zero is taken, but what can't be shown in no time can't be exported. Ranges and durations that are
    /// negative or not numeric are ignored.
    void scaleTimeRange(const CMTimeRange& range, const CMTime& toDuration);

    std::vector<AVAssetTrackSegment> segments() const override { return m_segments; }

private:
    CMTime end() const;
    std::size_t splitAt(const CMTime& time);
    void updateFacts();

    std::vector<AVAssetTrackSegment> m_segments;
};

} // namespace anadrome
