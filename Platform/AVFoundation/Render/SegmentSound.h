#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/AVFoundation/Libav/TrackPipeline.h"

#include <deque>
#include <span>

namespace anadrome::render {

/// The sound of one stretch of a file's track, brought to the stretch's own speed by resampling: its pitch
/// follows the speed. Stereo at one rate. One thread at a time.
class SegmentSound {
public:
    SegmentSound(AVAssetTrackSegment segment, int sampleRate)
        : m_segment(std::move(segment)), m_sampleRate(sampleRate) {}
    ~SegmentSound();
    SegmentSound(const SegmentSound&) = delete;
    SegmentSound& operator=(const SegmentSound&) = delete;

    /// Adds the next samples, left and right by turns, to what is there. Nothing comes where the file has no
    /// sound: before its first, in its gaps and after its last.
    std::optional<NSError> addNext(std::span<float> samples);

private:
    std::optional<NSError> open();
    /// Brings more sound into the resampler, or its end.
    std::optional<NSError> feed();
    std::optional<NSError> prepare(const AudioStreamBasicDescription& format);
    std::optional<NSError> take(const CMSampleBufferRef& sound);
    std::optional<NSError> resampleFrom(const CMSampleBufferRef& sound, std::int64_t skipped);
    std::optional<NSError> resample(const std::uint8_t* data, std::int64_t count);
    std::optional<NSError> resampleSilence();

    const AVAssetTrackSegment m_segment;
    const int m_sampleRate;
    std::shared_ptr<libav::TrackPipeline> m_pipeline;
    AudioStreamBasicDescription m_format;
    libav::Owned<SwrContext> m_resampler;
    /// Samples of each channel that have gone into the resampler, which is how far the source has come.
    std::int64_t m_taken = 0;
    /// Samples that are missing before the sound that waits for them.
    std::int64_t m_silenceLeft = 0;
    CMSampleBufferRef m_behindSilence;
    bool m_ended = false;
    /// Resampled sound that hasn't been asked for.
    std::deque<float> m_waiting;
};

} // namespace anadrome::render
