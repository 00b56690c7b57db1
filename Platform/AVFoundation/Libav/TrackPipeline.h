#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Libav/BoundedQueue.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"
#include "Platform/Foundation/Result.h"

#include <memory>
#include <mutex>
#include <optional>

namespace anadrome::libav {

class Decoder;

/// What decoded samples are turned into: this pixel format for video, 16-bit interleaved integers for sound.
struct DecodedForm {
    /// Without one the pictures are planar, of 8 or 10 bits as decoded.
    std::optional<OSType> pixelFormat;
};

/// Decodes one track on a thread of its own, a few samples ahead of the one who takes them.
class TrackPipeline {
public:
    /// Opens the track's file and begins at once: with what the decoder needs to have for the sample at the
    /// time, so that some come before it.
    static Result<std::shared_ptr<TrackPipeline>> start(const AVAssetTrackRef& track, DecodedForm form,
                                                        const CMTime& from = kCMTimeZero);

    /// Waits for the next sample; null at the end, after a failure and after a cancel.
    CMSampleBufferRef next();

    /// Drops what is ready and makes the decoding thread end soon. Doesn't wait for it. Any thread.
    void cancel() { m_ready.abandon(); }

    /// Set, once next() has given null, if that was because the file couldn't be read on.
    std::optional<NSError> error() const;

private:
    explicit TrackPipeline(std::size_t ahead) : m_ready(ahead) {}

    template <typename Converter>
    void run(Decoder& decoder, Converter converter);

    BoundedQueue<CMSampleBufferRef> m_ready;
    mutable std::mutex m_mutex;
    std::optional<NSError> m_error;
};

} // namespace anadrome::libav
