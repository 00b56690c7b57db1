#pragma once

#include "Platform/AVFoundation/Libav/Owners.h"
#include "Platform/Foundation/Result.h"

/// How pictures get through an encoder that takes none so small.
namespace anadrome::libav {

/// A larger copy of a planar picture, whose last column and row are repeated.
Owned<AVFrame> paddedTo(int width, int height, const AVFrame& picture);

/// What an encoder gives out, described as pictures of that size: the rest, at the right and at the bottom,
/// is cut off by whoever decodes them. The filter is one of the codec's bitstream.
Result<Owned<AVCodecParameters>> cropped(const AVCodecParameters& coded, const char* filter, int width,
                                         int height);

} // namespace anadrome::libav
