#include "Platform/AVFoundation/Libav/FramePixels.h"

#include "Platform/AVFoundation/Libav/PixelFormats.h"

#include <array>

namespace anadrome::libav {

namespace {

OSType planarType(int format) {
    switch (format) {
    case AV_PIX_FMT_YUV420P:
        return kCVPixelFormatType_420YpCbCr8Planar;
    case AV_PIX_FMT_YUV420P10LE:
        return kCVPixelFormatType_420YpCbCr10Planar;
    default:
        return 0;
    }
}

void letGo(void* pixels, std::uint8_t*) {
    auto* reference = static_cast<CVPixelBufferRef*>(pixels);
    CVPixelBufferUnlockBaseAddress(*reference, kCVPixelBufferLock_ReadOnly);
    delete reference;
}

} // namespace

bool isPlanar420(const AVFrame& frame) {
    return planarType(frame.format) != 0;
}

CVPixelBufferRef pixelsAround(Owned<AVFrame> frame) {
    std::array<CVPlaneBytes, 3> planes;
    for (std::size_t i = 0; i < planes.size(); ++i) {
        if (!frame->data[i] || frame->linesize[i] <= 0)
            return nullptr;
        planes[i] = {reinterpret_cast<std::byte*>(frame->data[i]),
                     static_cast<std::size_t>(frame->linesize[i])};
    }
    const OSType type = planarType(frame->format);
    const auto width = static_cast<std::size_t>(frame->width);
    const auto height = static_cast<std::size_t>(frame->height);
    const std::shared_ptr<const AVFrame> owner = std::move(frame);
    CVPixelBufferRef pixels;
    CVPixelBufferCreateWithPlanarBytes(width, height, type, planes, owner, &pixels);
    CVBufferSetAttachments(pixels, chromaLocationAttachments(owner->chroma_location),
                           kCVAttachmentMode_ShouldPropagate);
    return pixels;
}

Owned<AVFrame> frameAround(const CVPixelBufferRef& pixels) {
    if (CVPixelBufferGetPlaneCount(pixels) != 3)
        return nullptr;
    Owned<AVFrame> frame = makeFrame();
    frame->width = static_cast<int>(CVPixelBufferGetWidth(pixels));
    frame->height = static_cast<int>(CVPixelBufferGetHeight(pixels));
    frame->format = libavFormat(CVPixelBufferGetPixelFormatType(pixels));
    frame->color_range = AVCOL_RANGE_MPEG;
    frame->chroma_location =
        chromaLocationFromAttachments(CVBufferCopyAttachments(pixels, kCVAttachmentMode_ShouldPropagate));
    CVPixelBufferLockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    const PixelPlanes planes(pixels);
    for (std::size_t i = 0; i < 3; ++i) {
        frame->data[i] = planes.addresses[i];
        frame->linesize[i] = planes.strides[i];
    }
    frame->buf[0] =
        av_buffer_create(frame->data[0], 0, letGo, new CVPixelBufferRef(pixels), AV_BUFFER_FLAG_READONLY);
    if (!frame->buf[0])
        throw std::bad_alloc();
    return frame;
}

} // namespace anadrome::libav
