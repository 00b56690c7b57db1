#include "Desktop/System/SharedFile.h"

#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/Photos/MovieName.h"

#include <filesystem>
#include <sys/stat.h>

namespace anadrome::desktop {

namespace fs = std::filesystem;

std::string displayName(const URL& movie) {
    struct stat status {};
    if (::stat(movie.path().c_str(), &status) != 0)
        return movie.lastPathComponent();
    return movieName(status.st_mtim.tv_sec) + fs::path(movie.path()).extension().string();
}

URL sharedFile(const URL& movie) {
    const fs::path original = movie.path();
    const fs::path folder = fs::path(TemporaryDirectory::shared().path()) / original.stem();
    const fs::path link = folder / displayName(movie);
    std::error_code failure;
    fs::create_directories(folder, failure);
    fs::create_hard_link(original, link, failure);
    return fs::equivalent(original, link, failure) ? URL::fileURLWithPath(link.string()) : movie;
}

} // namespace anadrome::desktop
