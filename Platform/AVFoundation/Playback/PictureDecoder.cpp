#include "Platform/AVFoundation/Playback/PictureDecoder.h"

#include <algorithm>

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace anadrome::playback {

namespace {

OSType formatFor(const libav::Decoder& decoder) {
    const auto stored =
        static_cast<AVPixelFormat>(decoder.file().stream(decoder.streamIndex())->codecpar->format);
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(stored);
    return format && format->comp[0].depth > 8 ? kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange
                                               : kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange;
}

CMVideoDimensions storedSize(const AVAssetTrack& track) {
    return track.formatDescriptions().front()->dimensions;
}

} // namespace

Result<std::unique_ptr<PictureDecoder>> PictureDecoder::open(const AVAssetTrackRef& track) {
    Result<libav::Decoder> decoder = libav::Decoder::open(track->url(), track->streamIndex());
    if (!decoder)
        return decoder.error();
    return std::unique_ptr<PictureDecoder>(new PictureDecoder(track, std::move(*decoder)));
}

PictureDecoder::PictureDecoder(AVAssetTrackRef track, libav::Decoder decoder)
    : m_track(std::move(track)), m_decoder(std::move(decoder)), m_pixelFormat(formatFor(m_decoder)),
      m_rounding(CMTimeMake(1, 2 * std::clamp(m_track->naturalTimeScale(), 1, 1 << 29))),
      m_size(storedSize(*m_track)),
      m_converter(m_track->formatDescriptions().front(), m_pixelFormat, m_size) {}

void PictureDecoder::setSize(CMVideoDimensions size) {
    if (size == m_size)
        return;
    m_size = size;
    m_converter = libav::FrameConverter(m_track->formatDescriptions().front(), m_pixelFormat, size);
}

CMTime PictureDecoder::seek(const CMTime& time) {
    m_lastTime = kCMTimeInvalid;
    const Result<CMTime> key = m_decoder.seek(time);
    return key ? *key : kCMTimeInvalid;
}

std::optional<DecodedPicture> PictureDecoder::next() {
    libav::Owned<AVFrame> frame = libav::makeFrame();
    while (m_decoder.next(frame.get())) {
        CMTime time = m_decoder.time(*frame);
        if (!CMTIME_IS_NUMERIC(time))
            time = CMTIME_IS_VALID(m_lastTime) ? CMTimeAdd(m_lastTime, pictureDuration()) : kCMTimeZero;
        if (!CMTIME_IS_VALID(m_lastTime) || CMTimeCompare(time, m_lastTime) > 0) {
            m_lastTime = time;
            return DecodedPicture{std::move(frame), time};
        }
        av_frame_unref(frame.get());
    }
    return std::nullopt;
}

CVPixelBufferRef PictureDecoder::convert(const DecodedPicture& picture) {
    return m_converter.convert(*picture.frame);
}

std::size_t PictureDecoder::pictureBytes() const {
    const std::size_t wide = m_pixelFormat == kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange ? 2 : 1;
    const std::size_t row = (static_cast<std::size_t>(m_size.width) * wide + 63) / 64 * 64;
    return row * static_cast<std::size_t>(m_size.height) * 3 / 2;
}

CMTime PictureDecoder::pictureDuration() const {
    const double rate = m_track->nominalFrameRate();
    return CMTimeMakeWithSeconds(1 / std::clamp(rate, 0.1, 1000.0), 90000);
}

} // namespace anadrome::playback
