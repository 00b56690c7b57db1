#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/URL.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace anadrome {

class ExportTimer;

/// The media operations on a clip. They work on files: each reads its input from one and writes a new one.
class VideoEncoder {
public:
    /// Success, or failure with a message for people. Runs on the thread where the result arose.
    using Completion = std::function<void(bool success, std::optional<std::string> message)>;
    /// Takes a fraction of the whole job. Called from any thread, and often.
    using ProgressSink = std::function<void(float progress)>;

    /// Takes the fraction of one export that is done. Called on the main queue, and once with 1 on the thread
    /// where the export ended.
    using ProgressHandler = std::function<void(float progress)>;
    /// The URL of the new movie, or what went wrong.
    using URLCompletion = std::function<void(Result<URL> result)>;

    /// The sink is where reverseVideo() reports its progress.
    explicit VideoEncoder(ProgressSink updateProgress);

    /// Ends the operation that runs, and every later one as soon as it starts. They remove what they have
    /// written and complete with a failure. Any thread; returns at once.
    void cancel() { m_stop.request_stop(); }
    bool isCancelled() const { return m_stop.stop_requested(); }

    /// Frames that the last reversal read but left out, as they couldn't be stored or encoded.
    std::int64_t missingFrames() const { return *m_missingFrames; }

    /// Writes a movie whose frames run in the opposite order, with the sound reversed too. Frame i of the
    /// output shows frame N - 1 - i of the input at the time of the input's frame i; size, bit rate,
    /// orientation and the choice between SDR and HDR are the input's. The video is HEVC in either container.
    ///
    /// Blocks the caller while it reads the whole input, then returns; the rest happens on a queue of the
    /// encoder's. The completion is called exactly once, unless it is empty. `isReverseOnly` tells that the
    /// reversal is the first of two stages of a job and not of four, which only scales the progress. The
    /// output must not exist. Two runs at a time aren't possible: they would share the frame store.
    void reverseVideo(const URL& inputUrl, const URL& outputUrl, AVFileType fileType, Completion completion,
                      bool isReverseOnly);

    // The exports. All return at once, use the quality that the preference "resolutionIndexKey" names when
    // they start, and need an output that doesn't exist. What fails before an export starts completes on the
    // calling thread, before the call returns.

    /// Writes the clip at another speed; 2 halves its duration, which comes out rounded to tenths of a
    /// second. The picture is upright, with 30 frames a second, and the pitch of the sound follows the speed.
    void changeSpeed(const URL& inputUrl, const URL& outputUrl, AVFileType fileType, double speed,
                     ProgressHandler progressHandler, Completion completion);

    /// Writes two clips one after the other, in the size of the first. Their transforms play no part. A
    /// second clip without video is fatal.
    void merge(const URL& firstUrl, const URL& secondUrl, const URL& outputUrl, AVFileType fileType,
               ProgressHandler progressHandler, Completion completion);

    /// Writes the input once more, with the metadata of the source.
    void compressVideo(const URL& sourceUrl, const URL& inputUrl, const URL& outputUrl, AVFileType fileType,
                       URLCompletion completion);

    /// Bits a second of the first video track, estimated from the file's size if the track doesn't tell.
    /// Empty without a video track or a readable file; a rate that is no 64-bit integer is fatal.
    static std::optional<std::int64_t> originalBitrate(const AVAsset& asset);

private:
    /// Serial: runs the feed loops and the finishing step of a run.
    const DispatchQueue m_queue;
    const ProgressSink m_updateProgress;
    std::stop_source m_stop;
    const std::shared_ptr<std::atomic<std::int64_t>> m_missingFrames;
    /// Of the export that runs.
    const std::shared_ptr<ExportTimer> m_exportTimer;
};

} // namespace anadrome
