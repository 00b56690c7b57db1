#pragma once

#include "Platform/CoreVideo/CVPixelBuffer.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <cstdint>
#include <optional>

namespace anadrome {

/// Keeps decoded frames on disk, so that a clip can be read forwards and encoded backwards without being held
/// in memory. A frame is two files in the folder "Frames" of the temporary directory: "frame_" n
/// "_metadata.json" and "frame_" n ".data" with the planes' bytes one after another, row padding and all.
///
/// One thread at a time, and one run at a time, as all runs share the names. No failure stops a run: a frame
/// that couldn't be saved is one that can't be loaded.
class VideoFrameManager {
public:
    /// Made if missing, also when it went away in between.
    static URL framesDirectory();

    /// Replaces a frame of the same index.
    static void saveFrame(const CVPixelBufferRef& pixelBuffer, std::int64_t index);

    /// Why a frame couldn't be saved, the first of those since frame 0; nothing if all could. Any thread.
    static std::optional<NSError> saveError();

    /// A new buffer; null if the frame isn't there whole. A data file shorter than its metadata says is
    /// fatal.
    static CVPixelBufferRef loadFrame(std::int64_t index);

    /// Empties the folder, whatever is in it, up to the first thing that can't be removed.
    static void removeAllFrames();
};

} // namespace anadrome
