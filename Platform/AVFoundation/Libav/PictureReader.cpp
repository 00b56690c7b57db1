#include "Platform/AVFoundation/Libav/PictureReader.h"

#include "Platform/AVFoundation/Libav/FramePixels.h"

#include <algorithm>
#include <array>

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

namespace anadrome::libav {

namespace {

bool isFullRange(const AVFrame& frame) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return frame.color_range == AVCOL_RANGE_JPEG || (format->flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

/// Only a vertical change of the chroma grid would mix the lines of two fields.
bool mixesFields(const AVFrame& frame) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return frame.interlaced_frame && format->log2_chroma_h == 0 && frame.height % 4 == 0;
}

OSType planarTypeFor(const AVFrame& frame) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return format->comp[0].depth > 8 ? kCVPixelFormatType_420YpCbCr10Planar
                                     : kCVPixelFormatType_420YpCbCr8Planar;
}

AVColorSpace matrixOf(const AVFrame& frame) {
    const bool told = frame.colorspace != AVCOL_SPC_UNSPECIFIED && frame.colorspace != AVCOL_SPC_RGB;
    return told ? frame.colorspace : assumedTags(frame.height).matrix;
}

/// The picture itself, or one of its fields: every other line.
struct Lines {
    std::array<const std::uint8_t*, 4> in{};
    std::array<int, 4> inStrides{};
    std::array<std::uint8_t*, 4> out{};
    std::array<int, 4> outStrides{};

    Lines field(int parity) const {
        Lines lines = *this;
        for (std::size_t plane = 0; plane < 4; ++plane) {
            if (in[plane])
                lines.in[plane] = in[plane] + parity * inStrides[plane];
            if (out[plane])
                lines.out[plane] = out[plane] + parity * outStrides[plane];
            lines.inStrides[plane] *= 2;
            lines.outStrides[plane] *= 2;
        }
        return lines;
    }
};

} // namespace

PictureReader::PictureReader(CMFormatDescriptionRef description, std::optional<OSType> pixelFormat)
    : m_description(std::move(description)), m_pixelFormat(pixelFormat) {
    for (const char* key :
         {kCVImageBufferColorPrimariesKey, kCVImageBufferTransferFunctionKey, kCVImageBufferYCbCrMatrixKey})
        if (m_description->extensions)
            if (const Value* value = find(*m_description->extensions, key))
                m_attachments.emplace(key, *value);
}

bool PictureReader::convert(const Decoder& decoder, const AVFrame& frame, const Deliver& deliver) {
    if (frame.width <= 0 || frame.height <= 0)
        return true;
    CVPixelBufferRef pixels = pixelsOf(frame);
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
        const std::int64_t ticks = std::max<std::int64_t>(frame.pkt_duration, 1);
        const AVRational timeBase = decoder.file().stream(decoder.streamIndex())->time_base;
        time = CMTIME_IS_VALID(m_lastTime) ? CMTimeAdd(m_lastTime, timeFrom(ticks, timeBase))
                                           : timeFrom(0, timeBase);
    }
    m_lastTime = time;
    return time;
}

CVPixelBufferRef PictureReader::pixelsOf(const AVFrame& frame) {
    const bool asItIs = !m_pixelFormat && isPlanar420(frame) && !isFullRange(frame);
    CVPixelBufferRef pixels = asItIs ? pixelsAround(own(av_frame_clone(&frame))) : nullptr;
    if (!pixels)
        pixels = convertedPixels(frame);
    if (!pixels)
        return nullptr;
    Dictionary attachments = m_attachments;
    attachments.merge(chromaLocationAttachments(frame.chroma_location));
    CVBufferSetAttachments(pixels, attachments, kCVAttachmentMode_ShouldPropagate);
    return pixels;
}

CVPixelBufferRef PictureReader::convertedPixels(const AVFrame& frame) {
    CVPixelBufferRef pixels;
    if (CVPixelBufferCreate(static_cast<std::size_t>(frame.width), static_cast<std::size_t>(frame.height),
                            m_pixelFormat.value_or(planarTypeFor(frame)), {}, &pixels) != kCVReturnSuccess)
        return nullptr;
    CVPixelBufferLockBaseAddress(pixels, 0);
    const bool converted = scale(frame, pixels);
    CVPixelBufferUnlockBaseAddress(pixels, 0);
    return converted ? pixels : nullptr;
}

bool PictureReader::scale(const AVFrame& frame, const CVPixelBufferRef& pixels) {
    const Source source{frame.width,
                        frame.height,
                        frame.format,
                        isFullRange(frame),
                        matrixOf(frame),
                        mixesFields(frame),
                        CVPixelBufferGetPixelFormatType(pixels)};
    if (!m_scaler || source != m_source) {
        m_scaler = makeScaler(source);
        m_source = source;
    }
    if (!m_scaler)
        return false;
    const PixelPlanes planes(pixels);
    Lines lines;
    lines.out = planes.addresses;
    lines.outStrides = planes.strides;
    for (std::size_t plane = 0; plane < 4; ++plane) {
        lines.in[plane] = frame.data[plane];
        lines.inStrides[plane] = frame.linesize[plane];
    }
    const int passes = source.byFields ? 2 : 1;
    for (int pass = 0; pass < passes; ++pass) {
        const Lines part = source.byFields ? lines.field(pass) : lines;
        sws_scale(m_scaler.get(), part.in.data(), part.inStrides.data(), 0, frame.height / passes,
                  part.out.data(), part.outStrides.data());
    }
    return true;
}

Owned<SwsContext> PictureReader::makeScaler(const Source& source) {
    const int height = source.byFields ? source.height / 2 : source.height;
    Owned<SwsContext> scaler = own(sws_alloc_context());
    av_opt_set_int(scaler.get(), "srcw", source.width, 0);
    av_opt_set_int(scaler.get(), "srch", height, 0);
    av_opt_set_int(scaler.get(), "src_format", source.format, 0);
    av_opt_set_int(scaler.get(), "dstw", source.width, 0);
    av_opt_set_int(scaler.get(), "dsth", height, 0);
    av_opt_set_int(scaler.get(), "dst_format", libavFormat(source.target), 0);
    av_opt_set_int(scaler.get(), "sws_flags", SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP, 0);
    const int* coefficients = sws_getCoefficients(source.matrix);
    constexpr int unity = 1 << 16;
    sws_setColorspaceDetails(scaler.get(), coefficients, source.range, coefficients, 0, 0, unity, unity);
    if (sws_init_context(scaler.get(), nullptr, nullptr) < 0)
        scaler.reset();
    return scaler;
}

} // namespace anadrome::libav
