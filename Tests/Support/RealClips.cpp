#include "Tests/Support/RealClips.h"

#include "Tests/Support/MovieReader.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace anadrome::testing_support {

namespace fs = std::filesystem;

namespace {

bool isLong(const fs::path& clip) {
    try {
        return readMovieHeaders(clip).video.at(0).durationSeconds > 60;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

fs::path realClipsFolder() {
    const char* told = std::getenv("ANADROME_MEDIA");
    return told ? fs::path(told) : fs::path(ANADROME_SOURCE_DIR) / ".." / "shared" / "media";
}

std::vector<fs::path> shortRealClips() {
    std::vector<fs::path> clips;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(realClipsFolder(), none)) {
        const fs::path& clip = entry.path();
        if ((clip.extension() == ".mp4" || clip.extension() == ".mov") && !isLong(clip))
            clips.push_back(clip);
    }
    std::ranges::sort(clips);
    return clips;
}

} // namespace anadrome::testing_support
