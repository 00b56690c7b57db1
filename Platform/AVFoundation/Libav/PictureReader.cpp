#include "Platform/AVFoundation/Libav/PictureReader.h"

#include "Platform/AVFoundation/Libav/LibavVersions.h"

#include <algorithm>

namespace anadrome::libav {

PictureReader::PictureReader(CMFormatDescriptionRef description, std::optional<OSType> pixelFormat)
    : m_description(std::move(description)), m_converter(m_description, pixelFormat) {}

bool PictureReader::convert(const Decoder& decoder, const AVFrame& frame, const Deliver& deliver) {
    CVPixelBufferRef pixels = m_converter.convert(frame);
    if (!pixels)
        return true;
    const CMSampleTimingInfo timing{kCMTimeInvalid, risingTime(decoder, frame), kCMTimeInvalid};
    CMSampleBufferRef sample;
    CMSampleBufferCreateForImageBuffer(std::move(pixels), m_description, timing, &sample);
    return deliver(std::move(sample));
}

CMTime PictureReader::risingTime(const Decoder& decoder, const AVFrame& frame) {
    CMTime time = decoder.time(frame);
    if (CMTIME_IS_INVALID(time) || (CMTIME_IS_VALID(m_lastTime) && CMTimeCompare(time, m_lastTime) <= 0)) {
        const std::int64_t ticks = std::max<std::int64_t>(durationOf(frame), 1);
        const AVRational timeBase = decoder.file().stream(decoder.streamIndex())->time_base;
        time = CMTIME_IS_VALID(m_lastTime) ? CMTimeAdd(m_lastTime, timeFrom(ticks, timeBase))
                                           : timeFrom(0, timeBase);
    }
    m_lastTime = time;
    return time;
}

} // namespace anadrome::libav
