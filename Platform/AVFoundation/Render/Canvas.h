#pragma once

#include "Platform/AVFoundation/Render/Placement.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

namespace anadrome::render {

/// A black planar picture of 8 bits, video range. Null if there is no memory.
CVPixelBufferRef makeBlackPicture(const PixelSize& size);

/// Draws a planar picture of 8 bits, which has the placement's size before turning, onto another. What falls
/// outside is cut off. The opacity lies between 0 and 1.
void draw(const CVPixelBufferRef& picture, const Placement& placement, double opacity,
          const CVPixelBufferRef& onto);

} // namespace anadrome::render
