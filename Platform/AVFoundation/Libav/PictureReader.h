#pragma once

#include "Platform/AVFoundation/Libav/Decoder.h"
#include "Platform/AVFoundation/Libav/FrameConverter.h"
#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <functional>
#include <optional>

namespace anadrome::libav {

/// Turns decoded pictures into sample buffers, in the pixels that a FrameConverter gives and with times that
/// rise. One thread at a time.
class PictureReader {
public:
    using Deliver = std::function<bool(CMSampleBufferRef)>;

    /// Without a pixel format the pictures become planar, of 8 bits or 10 as they come.
    PictureReader(CMFormatDescriptionRef description, std::optional<OSType> pixelFormat);

    /// Delivers the picture. False when the receiver wants no more.
    bool convert(const Decoder& decoder, const AVFrame& frame, const Deliver& deliver);

private:
    /// A time behind the last one: containers without usable times get them laid end to end.
    CMTime risingTime(const Decoder& decoder, const AVFrame& frame);

    CMFormatDescriptionRef m_description;
    FrameConverter m_converter;
    CMTime m_lastTime = kCMTimeInvalid;
};

} // namespace anadrome::libav
