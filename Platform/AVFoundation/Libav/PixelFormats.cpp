#include "Platform/AVFoundation/Libav/PixelFormats.h"

namespace anadrome::libav {

AVPixelFormat libavFormat(OSType pixelFormat) {
    switch (pixelFormat) {
    case kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange:
        return AV_PIX_FMT_NV12;
    case kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange:
        return AV_PIX_FMT_P010LE;
    case kCVPixelFormatType_420YpCbCr8Planar:
        return AV_PIX_FMT_YUV420P;
    case kCVPixelFormatType_420YpCbCr10Planar:
        return AV_PIX_FMT_YUV420P10LE;
    case kCVPixelFormatType_32BGRA:
        return AV_PIX_FMT_BGRA;
    default:
        return AV_PIX_FMT_NONE;
    }
}

const char* chromaLocationName(AVChromaLocation location) {
    switch (location) {
    case AVCHROMA_LOC_LEFT:
        return kCVImageBufferChromaLocation_Left;
    case AVCHROMA_LOC_CENTER:
        return kCVImageBufferChromaLocation_Center;
    case AVCHROMA_LOC_TOPLEFT:
        return kCVImageBufferChromaLocation_TopLeft;
    default:
        return nullptr;
    }
}

Dictionary chromaLocationAttachments(AVChromaLocation location) {
    const char* name = chromaLocationName(location);
    return name ? Dictionary{{kCVImageBufferChromaLocationTopFieldKey, name},
                             {kCVImageBufferChromaLocationBottomFieldKey, name}}
                : Dictionary{};
}

AVChromaLocation chromaLocationFromAttachments(const Dictionary& attachments) {
    if (const std::string* name = findString(attachments, kCVImageBufferChromaLocationTopFieldKey))
        for (const AVChromaLocation location : {AVCHROMA_LOC_LEFT, AVCHROMA_LOC_CENTER, AVCHROMA_LOC_TOPLEFT})
            if (*name == chromaLocationName(location))
                return location;
    return AVCHROMA_LOC_UNSPECIFIED;
}

PixelPlanes::PixelPlanes(const CVPixelBufferRef& buffer) {
    const std::size_t count = CVPixelBufferGetPlaneCount(buffer);
    if (count == 0) {
        addresses[0] = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddress(buffer));
        strides[0] = static_cast<int>(CVPixelBufferGetBytesPerRow(buffer));
    }
    for (std::size_t plane = 0; plane < count; ++plane) {
        addresses[plane] = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(buffer, plane));
        strides[plane] = static_cast<int>(CVPixelBufferGetBytesPerRowOfPlane(buffer, plane));
    }
}

} // namespace anadrome::libav
