#include "Models/FrameStoreSpace.h"

#include "Models/SourceColor.h"
#include "Platform/Foundation/NSFileManager.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace anadrome {

namespace {

constexpr std::int64_t reserve = 32 << 20;

int errorOfFile(const URL& folder, std::int64_t size) {
    const URL trial = folder.appendingPathComponent("trial");
    const int descriptor = ::open(trial.path().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return errno;
    const int failure = size == 0 || ::fallocate(descriptor, 0, 0, size) == 0 ? 0 : errno;
    ::close(descriptor);
    ::unlink(trial.path().c_str());
    return failure == EOPNOTSUPP || failure == ENOSYS ? 0 : failure;
}

std::optional<std::int64_t> freeBytes(const URL& folder) {
    struct statvfs disk {};
    if (::statvfs(folder.path().c_str(), &disk) != 0)
        return std::nullopt;
    return static_cast<std::int64_t>(disk.f_bavail) * static_cast<std::int64_t>(disk.f_frsize);
}

/// The reverse stage writes its movie, at the clip's bit rate, while all frames are there.
std::int64_t reversedMovieSize(const AVAssetTrack& track) {
    const double seconds = CMTimeGetSeconds(track.timeRange().duration);
    const double bytes = track.estimatedDataRate() / 8 * seconds;
    return std::isfinite(bytes) ? static_cast<std::int64_t>(std::clamp(bytes, 0.0, 1e15)) : 0;
}

} // namespace

std::int64_t rawFrameSize(const AVAssetTrack& track) {
    const CMVideoDimensions size = track.formatDescriptions().front()->dimensions;
    const int bytesPerSample = sourceColor(track).isHDR ? 2 : 1;
    const std::int64_t bytesPerRow = (static_cast<std::int64_t>(size.width) * bytesPerSample + 63) / 64 * 64;
    return bytesPerRow * (size.height + (size.height + 1) / 2);
}

FrameStoreSpace FrameStoreSpace::measure(const AVAssetTrack& track) {
    const URL folder = NSFileManager::defaultManager().temporaryDirectory();
    const std::int64_t frameSize = rawFrameSize(track);
    return {.needed = track.sampleCount() * frameSize + reversedMovieSize(track) + reserve,
            .free = freeBytes(folder),
            .fileError = errorOfFile(folder, frameSize)};
}

} // namespace anadrome
