#include "Platform/AVFoundation/Libav/ScreenPixels.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"

namespace anadrome::libav {

Result<CGImage> screenPixels(const CVPixelBufferRef& picture, const ColorTags& color) {
    const int width = static_cast<int>(CVPixelBufferGetWidth(picture));
    const int height = static_cast<int>(CVPixelBufferGetHeight(picture));
    constexpr int exact = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT;
    const Owned<SwsContext> scaler(
        sws_getContext(width, height, libavFormat(CVPixelBufferGetPixelFormatType(picture)), width, height,
                       AV_PIX_FMT_RGBA, exact, nullptr, nullptr, nullptr));
    if (!scaler)
        return makeAVError(AVErrorDecodeFailed);
    const int* coefficients = sws_getCoefficients(color.matrix);
    constexpr int unity = 1 << 16;
    sws_setColorspaceDetails(scaler.get(), coefficients, 0, coefficients, 1, 0, unity, unity);

    CGImage image{width, height, {}};
    image.pixels.resize(image.bytesPerRow() * static_cast<std::size_t>(height));
    std::uint8_t* const rows[]{image.pixels.data()};
    const int bytesPerRow[]{static_cast<int>(image.bytesPerRow())};
    CVPixelBufferLockBaseAddress(picture, kCVPixelBufferLock_ReadOnly);
    const PixelPlanes planes(picture);
    sws_scale(scaler.get(), planes.addresses.data(), planes.strides.data(), 0, height, rows, bytesPerRow);
    CVPixelBufferUnlockBaseAddress(picture, kCVPixelBufferLock_ReadOnly);
    return image;
}

} // namespace anadrome::libav
