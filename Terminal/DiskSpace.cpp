#include "Terminal/DiskSpace.h"

#include "Models/SourceColor.h"
#include "Platform/Foundation/NSFileManager.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

// For the small files beside the frames and what the file system itself needs.
constexpr std::int64_t reserve = 32 << 20;

std::string gigabytes(std::int64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f GB", static_cast<double>(bytes) / 1e9);
    return text;
}

std::int64_t frameSize(const AVAssetTrack& track) {
    const CMVideoDimensions size = track.formatDescriptions().front()->dimensions;
    const int bytesPerSample = sourceColor(track).isHDR ? 2 : 1;
    const std::int64_t bytesPerRow = (static_cast<std::int64_t>(size.width) * bytesPerSample + 63) / 64 * 64;
    return bytesPerRow * (size.height + (size.height + 1) / 2);
}

/// Why a file of this size can't be made: limits and quotas show only when one tries. 0 if it can.
int obstacleToFile(const URL& folder, std::int64_t size) {
    const URL trial = folder.appendingPathComponent("trial");
    const int descriptor = ::open(trial.path().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return errno;
    const int failure = ::fallocate(descriptor, 0, 0, size) == 0 ? 0 : errno;
    ::close(descriptor);
    ::unlink(trial.path().c_str());
    return failure == EOPNOTSUPP || failure == ENOSYS ? 0 : failure;
}

} // namespace

std::optional<std::string> lackOfTemporarySpace(const AVAssetTrack& track) {
    const URL folder = NSFileManager::defaultManager().temporaryDirectory();
    if (const int failure = obstacleToFile(folder, frameSize(track)))
        return "Raw frames can't be kept in " + folder.path() + ": " + std::strerror(failure);
    struct statvfs disk {};
    if (::statvfs(folder.path().c_str(), &disk) != 0)
        return std::nullopt;
    const std::int64_t needed = track.sampleCount() * frameSize(track) + reserve;
    const auto free = static_cast<std::int64_t>(disk.f_bavail) * static_cast<std::int64_t>(disk.f_frsize);
    if (free >= needed)
        return std::nullopt;
    return "Not enough room for the raw frames in " + folder.path() + ": " + gigabytes(needed) + " needed, " +
           gigabytes(free) + " free";
}

} // namespace anadrome::terminal
