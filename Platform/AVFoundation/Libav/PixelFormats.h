#pragma once

#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <array>

extern "C" {
#include <libavutil/pixfmt.h>
}

namespace anadrome::libav {

/// The libav name of a pixel buffer's format; AV_PIX_FMT_NONE if it has none.
AVPixelFormat libavFormat(OSType pixelFormat);

/// Names of chroma locations in attachments; null, or unspecified, for those that have none.
const char* chromaLocationName(AVChromaLocation location);
/// Empty where it has no name.
Dictionary chromaLocationAttachments(AVChromaLocation location);
AVChromaLocation chromaLocationFromAttachments(const Dictionary& attachments);

/// The planes of a pixel buffer in the form that libav takes. Valid while the buffer is locked.
struct PixelPlanes {
    explicit PixelPlanes(const CVPixelBufferRef& buffer);

    std::array<std::uint8_t*, 4> addresses{};
    std::array<int, 4> strides{};
};

} // namespace anadrome::libav
