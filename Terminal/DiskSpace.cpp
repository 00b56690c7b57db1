#include "Terminal/DiskSpace.h"

#include "Models/FrameStoreSpace.h"
#include "Platform/Foundation/NSFileManager.h"

#include <cstdio>
#include <cstring>

namespace anadrome::terminal {

namespace {

std::string gigabytes(std::int64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f GB", static_cast<double>(bytes) / 1e9);
    return text;
}

} // namespace

std::optional<std::string> lackOfTemporarySpace(const AVAssetTrack& track) {
    const FrameStoreSpace space = FrameStoreSpace::measure(track);
    if (space.suffices())
        return std::nullopt;
    const std::string folder = NSFileManager::defaultManager().temporaryDirectory().path();
    if (space.fileError != 0)
        return "Raw frames can't be kept in " + folder + ": " + std::strerror(space.fileError);
    return "Not enough room for the raw frames in " + folder + ": " + gigabytes(space.needed) + " needed, " +
           gigabytes(*space.free) + " free";
}

} // namespace anadrome::terminal
