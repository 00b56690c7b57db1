#pragma once

#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <functional>

namespace anadrome::libav {

/// Turns decoded sound of any sample format into buffers of interleaved 16-bit integers, at most 1,024
/// samples of every channel each. Rate and channels are those of the first sound that comes. One thread at a
/// time.
class SoundReader {
public:
    using Deliver = std::function<bool(CMSampleBufferRef)>;

    /// Delivers the sound, which begins at the time, in pieces. False when the receiver wants no more.
    bool convert(const CMTime& start, const AVFrame& frame, const Deliver& deliver);
    /// The same at the time that the decoder knows.
    bool convert(const Decoder& decoder, const AVFrame& frame, const Deliver& deliver) {
        return convert(decoder.time(frame), frame, deliver);
    }

private:
    bool prepare(const AVFrame& frame);

    CMFormatDescriptionRef m_description;
    Owned<SwrContext> m_resampler;
    Owned<AVFrame> m_source;
    std::vector<std::int16_t> m_samples;
};

} // namespace anadrome::libav
