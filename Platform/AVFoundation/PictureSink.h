#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/CoreMedia/CMTime.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

namespace anadrome {

/// A picture and how it is to be shown: stretched over a rectangle of the natural size at the origin, which
/// the transform then turns upright.
struct ShownPicture {
    /// '420v' or 'x420', with colour attachments. Not to be written to.
    CVPixelBufferRef pixels;
    /// When the picture stands in the item.
    CMTime time;
    CGSize naturalSize;
    CGAffineTransform transform;
};

/// Where a player's pictures end up: the surface that a layer is drawn on. Called on the main thread.
class PictureSink {
public:
    virtual ~PictureSink() = default;

    /// The picture is on screen from now on.
    virtual void show(const ShownPicture& picture) = 0;
};

} // namespace anadrome
