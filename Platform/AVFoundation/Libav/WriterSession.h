#pragma once

#include "Platform/AVFoundation/AVAssetWriter.h"
#include "Platform/AVFoundation/Libav/MovieMuxer.h"
#include "Platform/AVFoundation/Libav/WriterLane.h"

#include <condition_variable>
#include <mutex>

namespace anadrome::libav {

/// The common state of a writer and its inputs, and the threads that encode.
///
/// Each lane has an encoding thread that takes samples from the lane's queue and gives packets to the muxer.
/// The threads hold the session alive; the last of them to end closes the file. Lock order: the session's
/// mutex is never held while an encoder, the muxer or foreign code runs.
class WriterSession : public std::enable_shared_from_this<WriterSession> {
public:
    WriterSession(URL url, AVFileType fileType) : m_url(std::move(url)), m_fileType(fileType) {}

    // Before start().
    void setMetadata(std::vector<AVMetadataItem> metadata) { m_layout.metadata = std::move(metadata); }
    void setIndexFirst(bool first) { m_layout.indexFirst = first; }

    std::shared_ptr<WriterLane> addLane(const AVAssetWriterInput& input);
    bool start(const std::vector<CGAffineTransform>& transforms);
    void startSession(const CMTime& time);
    void finish(std::function<void()> handler);
    void cancel();
    /// Returns when no encoding thread runs any more, which takes a finish() or a cancel() first.
    void waitForEncoders();

    AVAssetWriterStatus status() const;
    std::optional<NSError> error() const;

    bool isReady(const WriterLane& lane) const;
    void request(WriterLane& lane, const DispatchQueue& queue, std::function<void()> block);
    bool append(WriterLane& lane, EncoderInput input);
    void markAsFinished(WriterLane& lane);

private:
    // All of these expect the mutex to be held.
    bool readyLocked(const WriterLane& lane) const;
    void failLocked(NSError error);
    /// Returns the lane's block, to be destroyed after the mutex is let go: it may hold the last reference to
    /// the writer.
    [[nodiscard]] std::function<void()> finishLaneLocked(WriterLane& lane);
    void wakeRequestsLocked();
    void wakeRequestLocked(const std::shared_ptr<WriterLane>& lane);
    bool acceptTimeLocked(WriterLane& lane, EncoderInput& input);

    // The encoding thread of a lane.
    void runLane(std::size_t index);
    std::optional<NSError> encodeLane(std::size_t index);
    std::optional<EncoderInput> take(WriterLane& lane);
    void laneEnded(WriterLane& lane, std::optional<NSError> failure);
    void close();

    const URL m_url;
    const AVFileType m_fileType;
    MovieLayout m_layout;
    std::vector<std::shared_ptr<WriterLane>> m_lanes;
    std::vector<CGAffineTransform> m_transforms;
    std::unique_ptr<MovieMuxer> m_muxer;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    AVAssetWriterStatus m_status = AVAssetWriterStatus::unknown;
    std::optional<NSError> m_error;
    CMTime m_sessionStart = kCMTimeInvalid;
    bool m_finishing = false;
    bool m_closed = false;
    std::function<void()> m_completion;
};

} // namespace anadrome::libav
