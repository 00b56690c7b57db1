#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/URL.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace anadrome {

/// The media operations on a clip. They work on files: each reads its input from one and writes a new one.
class VideoEncoder {
public:
    /// Success, or failure with a message for people. Runs on the thread where the result arose.
    using Completion = std::function<void(bool success, std::optional<std::string> message)>;
    /// Takes a fraction of the whole job. Called from any thread, and often.
    using ProgressSink = std::function<void(float progress)>;

    /// The sink is where reverseVideo() reports its progress.
    explicit VideoEncoder(ProgressSink updateProgress);

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

    /// Bits a second of the first video track, estimated from the file's size if the track doesn't tell.
    /// Empty without a video track or a readable file; a rate that is no 64-bit integer is fatal.
    static std::optional<std::int64_t> originalBitrate(const AVAsset& asset);

private:
    /// Serial: runs the feed loops and the finishing step of a run.
    const DispatchQueue m_queue;
    const ProgressSink m_updateProgress;
};

} // namespace anadrome
