#pragma once

#include "Platform/AVFoundation/AVAssetExportSession.h"
#include "Platform/AVFoundation/AVAssetWriter.h"
#include "Platform/AVFoundation/Render/FrameSchedule.h"
#include "Platform/AVFoundation/Render/SoundMixer.h"

#include <atomic>
#include <mutex>

namespace anadrome::render {

/// What is to be exported and how.
struct ExportRequest {
    std::optional<AVMutableVideoComposition> videoComposition;
    std::optional<URL> outputURL;
    std::optional<AVFileType> outputFileType;
    std::optional<AVAudioTimePitchAlgorithm> pitchAlgorithm;
    std::optional<std::vector<AVMetadataItem>> metadata;
    bool optimizesForNetworkUse = false;
};

/// One export. Pictures and sound each come about on a serial queue of their own, whenever the writer is
/// ready for more; behind each stand the decoding threads of the tracks, before them the writer's encoding
/// threads. The blocks on these threads keep the run alive.
class ExportRun : public std::enable_shared_from_this<ExportRun> {
public:
    ExportRun(std::shared_ptr<const AVAsset> asset, const PixelSize& presetBox)
        : m_asset(std::move(asset)), m_presetBox(presetBox) {}

    /// Only before start().
    ExportRequest& request() { return m_request; }
    void start(std::function<void()> completion);
    /// See AVAssetExportSession::cancelExport().
    void cancel();

    AVAssetExportSessionStatus status() const;
    std::optional<NSError> error() const;
    float progress() const { return m_progress; }

private:
    std::optional<NSError> prepare();
    std::optional<NSError> checkTimeline() const;
    std::optional<NSError> prepareVideo();
    void prepareAudio();
    std::shared_ptr<AVAssetWriterInput> makeVideoInput(const FrameSchedule& schedule) const;
    void startWriting();
    /// Ends a cancelled run that writes.
    void abandon();

    /// A step of a feed: appends the next sample. False at the end.
    using Step = Result<bool> (ExportRun::*)();
    void feed(const std::shared_ptr<AVAssetWriterInput>& input, Step step);
    Result<bool> appendPicture();
    Result<bool> appendSound();

    /// An input has got all that it gets, or the run has failed.
    void feedEnded(std::optional<NSError> error);
    std::optional<NSError> feedError() const;
    void finishWriting();
    void complete(AVAssetExportSessionStatus status, std::optional<NSError> error);
    void report(const CMTime& time);

    const std::shared_ptr<const AVAsset> m_asset;
    const PixelSize m_presetBox;
    ExportRequest m_request;
    std::function<void()> m_completion;

    // Set before the feeds start.
    std::shared_ptr<AVAssetWriter> m_writer;
    std::shared_ptr<AVAssetWriterInput> m_videoInput;
    std::shared_ptr<AVAssetWriterInput> m_audioInput;
    std::unique_ptr<FrameSchedule> m_pictures;
    std::unique_ptr<SoundMixer> m_sound;
    CMTime m_length = kCMTimeZero;

    std::atomic<float> m_progress = 0;
    mutable std::mutex m_mutex;
    AVAssetExportSessionStatus m_status = AVAssetExportSessionStatus::unknown;
    std::optional<NSError> m_error;
    bool m_isCancelled = false;
    /// The writer has its file and may be stopped from another thread.
    bool m_isWriting = false;
    /// What ended the feeds before their time.
    std::optional<NSError> m_feedError;
    int m_openFeeds = 0;
};

} // namespace anadrome::render
