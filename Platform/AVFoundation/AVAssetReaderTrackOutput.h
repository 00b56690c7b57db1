#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/Result.h"

#include <atomic>
#include <memory>
#include <optional>

namespace anadrome {

namespace libav {
class TrackPipeline;
}

/// The decoded samples of one track.
///
/// Video settings: kCVPixelBufferPixelFormatTypeKey with '420v' or 'x420'. Pictures come in presentation
/// order with strictly rising times in the track's own timescale, in video range, at their stored size, with
/// the colour of the track's format description as attachments that propagate. Sound settings: AVFormatIDKey
/// 'lpcm' with 16-bit little-endian integers. Buffers hold at most 1,024 interleaved samples of every channel
/// at the source's rate.
class AVAssetReaderTrackOutput {
public:
    AVAssetReaderTrackOutput(AVAssetTrackRef track, Dictionary outputSettings);

    /// Waits for the next sample. Null at the end, after a failure and after a cancel; the reader's status
    /// tells which.
    CMSampleBufferRef copyNextSampleBuffer();

private:
    friend class AVAssetReader;

    std::optional<NSError> start();
    void cancel();
    /// The end of the track has been handed out, well or with an error.
    bool hasEnded() const { return m_ended; }
    std::optional<NSError> error() const;

    AVAssetTrackRef m_track;
    Dictionary m_settings;
    std::shared_ptr<libav::TrackPipeline> m_pipeline;
    std::atomic<bool> m_ended = false;
};

} // namespace anadrome
