#pragma once

#include "Platform/AVFoundation/Libav/InputFile.h"

#include <vector>

namespace anadrome::libav {

/// When a stream's presented samples start and end, and how much there is of them.
struct StreamTiming {
    CMTime start = kCMTimeInvalid;
    CMTime end = kCMTimeInvalid;
    std::int64_t sampleCount = 0;
    std::int64_t byteCount = 0;
};

/// Timing of every stream of a freshly opened file, by stream index. Reads the index where the file has a
/// whole one; otherwise reads all packets, which leaves the file at its end.
std::vector<StreamTiming> readStreamTimings(const InputFile& file);

} // namespace anadrome::libav
