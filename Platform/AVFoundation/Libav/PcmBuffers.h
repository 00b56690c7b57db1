#pragma once

#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <span>

namespace anadrome::libav {

/// Describes interleaved 16-bit integers.
CMFormatDescriptionRef describePcm(int sampleRate, int channels);

/// Copies interleaved 16-bit samples into a buffer of the described form that begins at the time.
CMSampleBufferRef makePcmBuffer(const CMFormatDescriptionRef& description,
                                std::span<const std::int16_t> samples, const CMTime& time);

} // namespace anadrome::libav
