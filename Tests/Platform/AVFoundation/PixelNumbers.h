#pragma once

#include "Platform/CoreVideo/CVPixelBuffer.h"
#include "Tests/Support/PictureReading.h"

#include <optional>
#include <vector>

namespace anadrome {

/// The top eight bits of the luma of a bi-planar picture of 8 or 10 bits.
inline std::vector<std::uint8_t> lumaOf(const CVPixelBufferRef& pixels) {
    const std::size_t width = CVPixelBufferGetWidth(pixels);
    const std::size_t height = CVPixelBufferGetHeight(pixels);
    const bool wide =
        CVPixelBufferGetPixelFormatType(pixels) == kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange;
    std::vector<std::uint8_t> luma;
    CVPixelBufferLockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    const auto* base = static_cast<const std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, 0));
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x)
            luma.push_back(base[y * CVPixelBufferGetBytesPerRowOfPlane(pixels, 0) + (wide ? 2 * x + 1 : x)]);
    CVPixelBufferUnlockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    return luma;
}

/// The number in such a picture.
inline std::optional<int> numberIn(const CVPixelBufferRef& pixels) {
    const std::vector<std::uint8_t> luma = lumaOf(pixels);
    const int width = static_cast<int>(CVPixelBufferGetWidth(pixels));
    const int height = static_cast<int>(CVPixelBufferGetHeight(pixels));
    return testing_support::readFrameNumber({luma.data(), width, width, height});
}

} // namespace anadrome
