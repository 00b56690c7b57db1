#pragma once

#include "Platform/AVFoundation/Libav/ColorTags.h"
#include "Platform/CoreGraphics/CGImage.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"
#include "Platform/Foundation/Result.h"

namespace anadrome::libav {

/// A planar picture of 8 bits, of ordinary video in that colour, as a screen takes it.
Result<CGImage> screenPixels(const CVPixelBufferRef& picture, const ColorTags& color);

} // namespace anadrome::libav
