#pragma once

#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

/// Pictures change between the forms of the frameworks and of libav without a copy; whichever form is left
/// keeps the pixels alive.
namespace anadrome::libav {

/// Whether a planar pixel buffer can have the frame's samples: 4:2:0 of 8 or 10 bits.
bool isPlanar420(const AVFrame& frame);

/// A planar pixel buffer over the frame's planes, with the place of its chroma samples attached. Null for
/// other frames.
CVPixelBufferRef pixelsAround(Owned<AVFrame> frame);

/// A frame over the planes of a planar pixel buffer, which must not be written to. Null for other buffers.
Owned<AVFrame> frameAround(const CVPixelBufferRef& pixels);

} // namespace anadrome::libav
