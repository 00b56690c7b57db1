#include "Platform/AVFoundation/Libav/FrameConverter.h"

#include "Platform/AVFoundation/Libav/ColorTags.h"
#include "Platform/AVFoundation/Libav/FramePixels.h"
#include "Platform/AVFoundation/Libav/LibavVersions.h"

#include <array>

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

namespace anadrome::libav {

namespace {

/// The format with the same samples whose name doesn't imply full range: the scaler takes the range by itself
/// and warns about such names.
AVPixelFormat withoutRange(int format) {
    switch (format) {
    case AV_PIX_FMT_YUVJ411P:
        return AV_PIX_FMT_YUV411P;
    case AV_PIX_FMT_YUVJ420P:
        return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P:
        return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ440P:
        return AV_PIX_FMT_YUV440P;
    case AV_PIX_FMT_YUVJ444P:
        return AV_PIX_FMT_YUV444P;
    default:
        return static_cast<AVPixelFormat>(format);
    }
}

bool isFullRange(const AVFrame& frame) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return frame.color_range == AVCOL_RANGE_JPEG || withoutRange(frame.format) != frame.format ||
           (format->flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

/// Only a vertical change of the chroma grid would mix the lines of two fields.
bool mixesFields(const AVFrame& frame) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return isInterlaced(frame) && format->log2_chroma_h == 0 && frame.height % 4 == 0;
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

FrameConverter::FrameConverter(const CMFormatDescriptionRef& description, std::optional<OSType> pixelFormat,
                               std::optional<CMVideoDimensions> size)
    : m_pixelFormat(pixelFormat), m_size(size) {
    for (const char* key :
         {kCVImageBufferColorPrimariesKey, kCVImageBufferTransferFunctionKey, kCVImageBufferYCbCrMatrixKey})
        if (description->extensions)
            if (const Value* value = find(*description->extensions, key))
                m_attachments.emplace(key, *value);
}

CVPixelBufferRef FrameConverter::convert(const AVFrame& frame) {
    if (frame.width <= 0 || frame.height <= 0)
        return nullptr;
    const bool asItIs = !m_pixelFormat && !m_size && isPlanar420(frame) && !isFullRange(frame);
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

CVPixelBufferRef FrameConverter::convertedPixels(const AVFrame& frame) {
    const CMVideoDimensions size = m_size.value_or(CMVideoDimensions{frame.width, frame.height});
    CVPixelBufferRef pixels;
    if (CVPixelBufferCreate(static_cast<std::size_t>(size.width), static_cast<std::size_t>(size.height),
                            m_pixelFormat.value_or(planarTypeFor(frame)), {}, &pixels) != kCVReturnSuccess)
        return nullptr;
    CVPixelBufferLockBaseAddress(pixels, 0);
    const bool converted = scale(frame, pixels);
    CVPixelBufferUnlockBaseAddress(pixels, 0);
    return converted ? pixels : nullptr;
}

bool FrameConverter::scale(const AVFrame& frame, const CVPixelBufferRef& pixels) {
    Task task{frame.width,
              frame.height,
              withoutRange(frame.format),
              isFullRange(frame),
              matrixOf(frame),
              false,
              static_cast<int>(CVPixelBufferGetWidth(pixels)),
              static_cast<int>(CVPixelBufferGetHeight(pixels)),
              CVPixelBufferGetPixelFormatType(pixels)};
    task.byFields = !task.resizes() && mixesFields(frame);
    if (!m_scaler || task != m_task) {
        m_scaler = makeScaler(task);
        m_task = task;
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
    const int passes = task.byFields ? 2 : 1;
    for (int pass = 0; pass < passes; ++pass) {
        const Lines part = task.byFields ? lines.field(pass) : lines;
        sws_scale(m_scaler.get(), part.in.data(), part.inStrides.data(), 0, frame.height / passes,
                  part.out.data(), part.outStrides.data());
    }
    return true;
}

Owned<SwsContext> FrameConverter::makeScaler(const Task& task) {
    const int fields = task.byFields ? 2 : 1;
    const int exact = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INP;
    Owned<SwsContext> scaler = own(sws_alloc_context());
    av_opt_set_int(scaler.get(), "srcw", task.width, 0);
    av_opt_set_int(scaler.get(), "srch", task.height / fields, 0);
    av_opt_set_int(scaler.get(), "src_format", task.format, 0);
    av_opt_set_int(scaler.get(), "dstw", task.targetWidth, 0);
    av_opt_set_int(scaler.get(), "dsth", task.targetHeight / fields, 0);
    av_opt_set_int(scaler.get(), "dst_format", libavFormat(task.target), 0);
    av_opt_set_int(scaler.get(), "sws_flags", task.resizes() ? SWS_BILINEAR : exact, 0);
    const int* coefficients = sws_getCoefficients(task.matrix);
    constexpr int unity = 1 << 16;
    sws_setColorspaceDetails(scaler.get(), coefficients, task.range, coefficients, 0, 0, unity, unity);
    if (sws_init_context(scaler.get(), nullptr, nullptr) < 0)
        scaler.reset();
    return scaler;
}

} // namespace anadrome::libav
