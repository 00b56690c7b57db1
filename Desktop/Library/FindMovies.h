#pragma once

#include "Platform/Foundation/URL.h"

#include <cstdint>
#include <stop_token>
#include <vector>

namespace anadrome::desktop {

struct FoundMovie {
    URL file;
    /// When the file was last written to, in seconds since 1970.
    std::int64_t modified = 0;
};

/// The movies in a folder and the folders in it, the newest first. Hidden files and folders are left out; a
/// folder that links lead to again counts once. What lies deeper than anybody would sort movies, or behind
/// more files than anybody has, isn't found. Blocks while the disk is read; empty if it was stopped. Any
/// thread.
std::vector<FoundMovie> findMovies(const URL& folder, const std::stop_token& stop);

} // namespace anadrome::desktop
