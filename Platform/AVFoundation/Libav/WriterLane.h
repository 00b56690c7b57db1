#pragma once

#include "Platform/AVFoundation/Libav/TrackEncoder.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/Dispatch/DispatchQueue.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace anadrome::libav {

/// One input of a WriterSession. Everything but the encoder is guarded by the session's mutex.
class WriterLane {
public:
    WriterLane(std::unique_ptr<TrackEncoder> trackEncoder, std::size_t queueCapacity)
        : encoder(std::move(trackEncoder)), capacity(queueCapacity) {}

    /// Used by the lane's encoding thread alone, and gone when that has ended.
    std::unique_ptr<TrackEncoder> encoder;
    const std::size_t capacity;

    std::deque<EncoderInput> queue;
    /// No more samples come in.
    bool finished = false;
    /// The encoding thread has ended.
    bool drained = false;
    /// The end of what was appended so far, in the session's time.
    CMTime position = kCMTimeInvalid;
    /// The time of the last appended picture.
    CMTime lastTime = kCMTimeInvalid;

    /// The block that asks for data, and whether it is on its way or running.
    std::optional<DispatchQueue> requestQueue;
    std::function<void()> request;
    bool requestInFlight = false;
    bool toldOfFailure = false;
};

} // namespace anadrome::libav
