#include "Platform/AVFoundation/Libav/EncoderPictures.h"

#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/FramePixels.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"
#include "Platform/AVFoundation/Libav/Repack.h"

namespace anadrome::libav {

namespace {

int even(std::size_t side) {
    return static_cast<int>(side + side % 2);
}

/// The planar format with the samples of a pixel buffer's format.
AVPixelFormat planarFormat(OSType pixelFormat) {
    switch (pixelFormat) {
    case kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange:
        return AV_PIX_FMT_YUV420P;
    case kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange:
        return AV_PIX_FMT_YUV420P10LE;
    default:
        return AV_PIX_FMT_NONE;
    }
}

} // namespace

Result<AVFrame*> EncoderPictures::convert(const CVPixelBufferRef& pixels) {
    if (CVPixelBufferGetPlaneCount(pixels) == 3)
        m_planar = frameAround(pixels);
    else if (std::optional<NSError> error = repack(pixels))
        return *error;
    const PictureForm form = formOf(pixels);
    PictureForm target = m_target;
    if (target.color == ColorTags{})
        target.color = form.color;
    if (form == target)
        return m_planar.get();

    if (!m_converter || m_converter->source() != form) {
        Result<std::unique_ptr<PictureConverter>> made = PictureConverter::make(form, target);
        if (!made)
            return made.error();
        m_converter = std::move(*made);
    }
    return m_converter->convert(m_planar.get());
}

PictureForm EncoderPictures::formOf(const CVPixelBufferRef& pixels) const {
    PictureForm form;
    form.width = m_planar->width;
    form.height = m_planar->height;
    form.format = static_cast<AVPixelFormat>(m_planar->format);
    if (m_target.color != ColorTags{}) {
        const Dictionary attachments = CVBufferCopyAttachments(pixels, kCVAttachmentMode_ShouldPropagate);
        form.color = filled(tagsFromAttachments(attachments), assumedTags(form.height));
    }
    return form;
}

/// Splits the chroma plane in two. A last odd column or row is doubled, as 4:2:0 has none.
std::optional<NSError> EncoderPictures::repack(const CVPixelBufferRef& pixels) {
    const OSType pixelFormat = CVPixelBufferGetPixelFormatType(pixels);
    const AVPixelFormat format = planarFormat(pixelFormat);
    if (format == AV_PIX_FMT_NONE)
        return makeAVError(AVErrorUnsupportedOutputSettings);
    const int width = even(CVPixelBufferGetWidth(pixels));
    const int height = even(CVPixelBufferGetHeight(pixels));
    if (!m_planar || m_planar->width != width || m_planar->height != height || m_planar->format != format) {
        m_planar = makeFrame();
        m_planar->width = width;
        m_planar->height = height;
        m_planar->format = format;
        m_planar->color_range = AVCOL_RANGE_MPEG;
        if (av_frame_get_buffer(m_planar.get(), 0) < 0)
            return makeAVError(AVErrorOutOfMemory);
    } else if (!av_frame_is_writable(m_planar.get())) {
        av_frame_unref(m_planar.get());
        m_planar.reset();
        return repack(pixels);
    }

    CVPixelBufferLockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    repackToPlanar(PixelPlanes(pixels), CVPixelBufferGetWidth(pixels), CVPixelBufferGetHeight(pixels),
                   *m_planar);
    CVPixelBufferUnlockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    return std::nullopt;
}

} // namespace anadrome::libav
