#pragma once

#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <span>

namespace anadrome {

/// A sample buffer with the order of its 16-bit words reversed, as one flat run: interleaved channels change
/// places. The words are reversed in place, so the given buffer's sound has changed too. It gets the given
/// timing. Null if the buffer has no sound; the buffer itself, with its old timing, if the new one can't be
/// made.
CMSampleBufferRef reversedSampleBuffer(const CMSampleBufferRef& buffer,
                                       std::span<const CMSampleTimingInfo> timings);

} // namespace anadrome
