#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Render/SegmentSound.h"

#include <memory>
#include <span>

namespace anadrome::render {

/// The sound of one track along its time, in stereo at one rate, decoded as it is asked for. One thread at a
/// time.
class SoundTrack {
public:
    SoundTrack(const AVAssetTrackRef& track, int sampleRate)
        : m_segments(track->segments()), m_sampleRate(sampleRate) {}

    /// Adds the track's next samples, left and right by turns, to what is there. Nothing comes after its end.
    std::optional<NSError> addNext(std::span<float> samples);

private:
    std::int64_t segmentEnd() const;

    const std::vector<AVAssetTrackSegment> m_segments;
    const int m_sampleRate;
    std::size_t m_index = 0;
    /// Samples of each channel so far.
    std::int64_t m_position = 0;
    std::unique_ptr<SegmentSound> m_open;
};

} // namespace anadrome::render
