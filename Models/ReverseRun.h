#pragma once

#include "Models/VideoEncoder.h"
#include "Platform/AVFoundation/AVAssetReader.h"
#include "Platform/AVFoundation/AVAssetWriter.h"
#include "Platform/AVFoundation/AVAssetWriterInputPixelBufferAdaptor.h"
#include "Platform/Dispatch/DispatchGroup.h"

#include <atomic>
#include <memory>
#include <stop_token>
#include <vector>

namespace anadrome {

/// One run of VideoEncoder::reverseVideo().
///
/// Opening, reading and configuring happen on the caller's thread in one go. Writing happens in two feed
/// loops on the encoder's serial queue, which keep the run alive; they never run at the same time, so nothing
/// here needs a lock.
class ReverseRun : public std::enable_shared_from_this<ReverseRun> {
public:
    struct Request {
        URL inputUrl;
        URL outputUrl;
        AVFileType fileType;
        VideoEncoder::Completion completion;
        bool isReverseOnly;
        /// Ends the run from any thread.
        std::stop_token stop;
        /// Counts the frames that the output lacks.
        std::shared_ptr<std::atomic<std::int64_t>> missingFrames;
    };
    ReverseRun(Request request, DispatchQueue queue, VideoEncoder::ProgressSink updateProgress);

    void start();

private:
    // Each gives the message of its failure, if it fails.
    std::optional<std::string> open();
    std::optional<std::string> read();
    std::optional<std::string> configure();

    void readVideo(AVAssetReaderTrackOutput& output);
    void readAudio(AVAssetReaderTrackOutput& output);

    Dictionary videoSettings() const;
    std::shared_ptr<AVAssetWriterInput> makeVideoInput() const;
    std::shared_ptr<AVAssetWriterInput> makeAudioInput() const;

    void startWriting();
    void feedVideo();
    void feedAudio();
    void finishWriting();
    /// Ends a stopped run that writes.
    void abandon();
    bool isStopped() const { return m_request.stop.stop_requested(); }
    void complete(bool success, std::optional<std::string> message) const;

    void reportReading(std::int64_t savedFrames);
    void reportWriting(std::size_t frame, std::size_t count);
    /// The share of the job that this run is.
    float weight() const { return m_request.isReverseOnly ? 0.5F : 0.25F; }

    const Request m_request;
    const DispatchQueue m_queue;
    const VideoEncoder::ProgressSink m_updateProgress;

    // Opening.
    std::shared_ptr<AVAsset> m_asset;
    std::shared_ptr<AVAssetReader> m_reader;
    AVAssetTrackRef m_videoTrack;
    std::optional<Dictionary> m_colorProperties;
    bool m_isHDR = false;

    // Reading.
    float m_expectedFrameCount = 0;
    bool m_hasAudio = false;
    std::vector<CMTime> m_frameTimestamps;
    std::vector<CMSampleBufferRef> m_audioSampleBuffers;
    std::vector<CMSampleTimingInfo> m_audioTimings;

    // Writing. The indices survive between the calls of the feed loops.
    std::shared_ptr<AVAssetWriter> m_writer;
    std::shared_ptr<AVAssetWriterInput> m_videoInput;
    std::shared_ptr<AVAssetWriterInput> m_audioInput;
    std::unique_ptr<AVAssetWriterInputPixelBufferAdaptor> m_adaptor;
    DispatchGroup m_group;
    std::size_t m_videoFrameIndex = 0;
    std::size_t m_audioBufferIndex = 0;
    bool m_videoFinished = false;
    bool m_audioFinished = false;
    /// Set by whoever completes the run: the writer, or abandon().
    std::atomic<bool> m_isEnded = false;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
};

} // namespace anadrome
