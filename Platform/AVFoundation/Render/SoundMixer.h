#pragma once

#include "Platform/AVFoundation/Render/SoundTrack.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"

namespace anadrome::render {

/// All sound tracks of an asset together, in 16-bit stereo, from zero up to a length. One thread at a time.
class SoundMixer {
public:
    SoundMixer(std::span<const AVAssetTrackRef> tracks, int sampleRate, const CMTime& length);

    /// The next run of sound; null at the end.
    Result<CMSampleBufferRef> next();

private:
    std::vector<std::unique_ptr<SoundTrack>> m_tracks;
    const CMFormatDescriptionRef m_description;
    const std::int64_t m_length;
    std::int64_t m_position = 0;
};

/// The rate that the mixed sound of these tracks has: the highest of theirs that the encoder takes, up to 48
/// kHz.
int mixedSampleRate(std::span<const AVAssetTrackRef> tracks);

} // namespace anadrome::render
