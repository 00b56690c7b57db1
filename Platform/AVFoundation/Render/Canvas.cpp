#include "Platform/AVFoundation/Render/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace anadrome::render {

namespace {

struct PlaneView {
    std::uint8_t* bytes;
    std::ptrdiff_t bytesPerRow;
    int width;
    int height;

    std::uint8_t* at(int x, int y) const { return bytes + y * bytesPerRow + x; }
};

/// The buffer must be locked.
PlaneView planeOf(const CVPixelBufferRef& pixels, std::size_t plane) {
    return {static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, plane)),
            static_cast<std::ptrdiff_t>(CVPixelBufferGetBytesPerRowOfPlane(pixels, plane)),
            static_cast<int>(CVPixelBufferGetWidthOfPlane(pixels, plane)),
            static_cast<int>(CVPixelBufferGetHeightOfPlane(pixels, plane))};
}

/// A rectangle of an output's plane and the walk through the picture's plane that fills it: where it begins,
/// and how far one step to the right and one step down go.
struct Walk {
    int left;
    int top;
    int right;
    int bottom;
    const std::uint8_t* start;
    std::ptrdiff_t stepX;
    std::ptrdiff_t stepY;
};

Walk walkFor(const PlaneView& from, const PlaneView& onto, const Placement& placement, int left, int top) {
    const int width = placement.isTransposed ? from.height : from.width;
    const int height = placement.isTransposed ? from.width : from.height;
    Walk walk{std::max(left, 0),
              std::max(top, 0),
              std::min(left + width, onto.width),
              std::min(top + height, onto.height),
              from.bytes,
              placement.isTransposed ? from.bytesPerRow : 1,
              placement.isTransposed ? 1 : from.bytesPerRow};
    const int skippedX = placement.mirrorsX ? left + width - 1 - walk.left : walk.left - left;
    const int skippedY = placement.mirrorsY ? top + height - 1 - walk.top : walk.top - top;
    walk.start += skippedX * walk.stepX + skippedY * walk.stepY;
    if (placement.mirrorsX)
        walk.stepX = -walk.stepX;
    if (placement.mirrorsY)
        walk.stepY = -walk.stepY;
    return walk;
}

/// In tiles: a turned picture is read down its columns, which would go through the whole of it for each row.
template <typename Put>
void follow(const Walk& walk, const PlaneView& onto, Put put) {
    constexpr int tile = 32;
    for (int tileY = walk.top; tileY < walk.bottom; tileY += tile)
        for (int tileX = walk.left; tileX < walk.right; tileX += tile)
            for (int y = tileY; y < std::min(tileY + tile, walk.bottom); ++y) {
                const std::uint8_t* from =
                    walk.start + (tileX - walk.left) * walk.stepX + (y - walk.top) * walk.stepY;
                std::uint8_t* to = onto.at(tileX, y);
                for (int x = tileX; x < std::min(tileX + tile, walk.right); ++x, from += walk.stepX)
                    put(*to++, *from);
            }
}

void copyRows(const Walk& walk, const PlaneView& onto) {
    if (walk.left >= walk.right)
        return;
    for (int y = walk.top; y < walk.bottom; ++y)
        std::memcpy(onto.at(walk.left, y), walk.start + (y - walk.top) * walk.stepY,
                    static_cast<std::size_t>(walk.right - walk.left));
}

void drawPlane(const PlaneView& onto, const Walk& walk, double opacity) {
    if (opacity < 1) {
        const int share = static_cast<int>(std::lround(opacity * 256));
        follow(walk, onto, [share](std::uint8_t& to, std::uint8_t sample) {
            to = static_cast<std::uint8_t>((to * (256 - share) + sample * share + 128) >> 8);
        });
    } else if (walk.stepX == 1) {
        copyRows(walk, onto);
    } else {
        follow(walk, onto, [](std::uint8_t& to, std::uint8_t sample) { to = sample; });
    }
}

} // namespace

CVPixelBufferRef makeBlackPicture(const PixelSize& size) {
    CVPixelBufferRef pixels;
    if (CVPixelBufferCreate(static_cast<std::size_t>(size.width), static_cast<std::size_t>(size.height),
                            kCVPixelFormatType_420YpCbCr8Planar, {}, &pixels) != kCVReturnSuccess)
        return nullptr;
    CVPixelBufferLockBaseAddress(pixels, 0);
    for (std::size_t i = 0; i < 3; ++i) {
        const PlaneView plane = planeOf(pixels, i);
        const int black = i == 0 ? 16 : 128;
        std::memset(plane.bytes, black, static_cast<std::size_t>(plane.bytesPerRow * plane.height));
    }
    CVPixelBufferUnlockBaseAddress(pixels, 0);
    return pixels;
}

void draw(const CVPixelBufferRef& picture, const Placement& placement, double opacity,
          const CVPixelBufferRef& onto) {
    CVPixelBufferLockBaseAddress(picture, kCVPixelBufferLock_ReadOnly);
    CVPixelBufferLockBaseAddress(onto, 0);
    for (std::size_t i = 0; i < 3; ++i) {
        const int subsampling = i == 0 ? 1 : 2;
        const PlaneView from = planeOf(picture, i);
        const PlaneView to = planeOf(onto, i);
        drawPlane(to, walkFor(from, to, placement, placement.left / subsampling, placement.top / subsampling),
                  opacity);
    }
    CVPixelBufferUnlockBaseAddress(onto, 0);
    CVPixelBufferUnlockBaseAddress(picture, kCVPixelBufferLock_ReadOnly);
}

} // namespace anadrome::render
