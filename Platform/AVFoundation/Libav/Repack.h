#pragma once

#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"

namespace anadrome::libav {

/// Copies a bi-planar 4:2:0 picture of the given size into a planar frame of the same depth: 8 bits, or 10
/// bits moved from the top of their words to the bottom. The frame's size is the picture's rounded up to even
/// numbers; a last odd column or row is doubled. (The scaling library takes several times as long for the
/// 10-bit form.)
void repackToPlanar(const PixelPlanes& source, std::size_t width, std::size_t height, AVFrame& destination);

} // namespace anadrome::libav
