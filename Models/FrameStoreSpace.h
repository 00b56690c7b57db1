#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"

#include <cstdint>
#include <optional>
#include <string>

namespace anadrome {

/// Disk space for the raw frames that a clip's reversal keeps in the temporary directory.
struct FrameStoreSpace {
    /// Bytes for all frames and for the reversed movie, with a reserve for the small files beside them and
    /// for the file system.
    std::int64_t needed = 0;
    /// Bytes that this user may still write; empty if the file system doesn't report them.
    std::optional<std::int64_t> free;
    /// errno of an attempt to make a file the size of one frame, which is how limits and quotas show; 0 if it
    /// succeeded.
    int fileError = 0;

    bool suffices() const { return fileError == 0 && (!free || *free >= needed); }

    /// Measures for a video track. Blocks for the time of a few file operations. Any thread.
    static FrameStoreSpace measure(const AVAssetTrack& track);
};

/// Bytes that VideoFrameManager writes for the planes of one frame of a video track.
std::int64_t rawFrameSize(const AVAssetTrack& track);

} // namespace anadrome
