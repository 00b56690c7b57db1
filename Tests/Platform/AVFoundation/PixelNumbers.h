#pragma once

#include "Platform/CoreVideo/CVPixelBuffer.h"
#include "Tests/Support/PictureReading.h"

#include <optional>

namespace anadrome {

/// The number in a bi-planar picture of 8 or 10 bits.
inline std::optional<int> numberIn(const CVPixelBufferRef& pixels) {
    const std::size_t width = CVPixelBufferGetWidth(pixels);
    const std::size_t height = CVPixelBufferGetHeight(pixels);
    const bool wide =
        CVPixelBufferGetPixelFormatType(pixels) == kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange;
    testing_support::LumaPicture luma{static_cast<int>(width), static_cast<int>(height)};
    CVPixelBufferLockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    const auto* base = static_cast<const std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, 0));
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x)
            luma.samples.push_back(
                base[y * CVPixelBufferGetBytesPerRowOfPlane(pixels, 0) + (wide ? 2 * x + 1 : x)]);
    CVPixelBufferUnlockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    return testing_support::readFrameNumber(luma);
}

} // namespace anadrome
