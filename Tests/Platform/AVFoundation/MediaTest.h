#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"
#include "Tests/Support/ClipTest.h"

#include <cstring>

namespace anadrome {

/// A test with made clips as assets.
class MediaTest : public testing_support::ClipTest {
protected:
    std::shared_ptr<AVAsset> makeAsset(const std::string& name,
                                       const testing_support::ClipOptions& options) const {
        return AVAsset::assetWithURL(URL::fileURLWithPath(clip(name, options)));
    }

    AVAssetTrackRef makeVideoTrack(const std::string& name,
                                   const testing_support::ClipOptions& options) const {
        return makeAsset(name, options)->tracksWithMediaType(AVMediaTypeVideo).at(0);
    }
};

/// A picture of 8 bits that is of one colour all over.
inline CVPixelBufferRef plainPicture(std::size_t width, std::size_t height, int luma, int cb = 128,
                                     int cr = 128) {
    CVPixelBufferRef pixels;
    CVPixelBufferCreate(width, height, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange, {}, &pixels);
    CVPixelBufferLockBaseAddress(pixels, 0);
    auto* y = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, 0));
    auto* c = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, 1));
    std::memset(y, luma, CVPixelBufferGetBytesPerRowOfPlane(pixels, 0) * height);
    const std::size_t chromaBytes =
        CVPixelBufferGetBytesPerRowOfPlane(pixels, 1) * CVPixelBufferGetHeightOfPlane(pixels, 1);
    for (std::size_t i = 0; i + 1 < chromaBytes; i += 2) {
        c[i] = static_cast<std::uint8_t>(cb);
        c[i + 1] = static_cast<std::uint8_t>(cr);
    }
    CVPixelBufferUnlockBaseAddress(pixels, 0);
    return pixels;
}

} // namespace anadrome
