#include "Platform/Photos/SaveVideo.h"

#include "Platform/Foundation/CopyBytes.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/PartialFile.h"
#include "Platform/Photos/MovieName.h"
#include "Platform/Photos/PHPhotosError.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome {

namespace {

NSError photosError(PHPhotosErrorCode code, int errnoValue) {
    const NSError cause = NSError::posix(errnoValue);
    return {PHPhotosErrorDomain, code,
            NSLocalizedString("The movie couldn’t be saved: %1.", {cause.localizedDescription()}), cause};
}

NSError sourceError(int errnoValue) {
    return photosError(errnoValue == ENOENT ? PHPhotosErrorMissingResource : PHPhotosErrorInvalidResource,
                       errnoValue);
}

NSError libraryError(int errnoValue) {
    switch (errnoValue) {
    case EACCES:
    case EPERM:
    case EROFS:
        return photosError(PHPhotosErrorAccessUserDenied, errnoValue);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return photosError(PHPhotosErrorNotEnoughSpace, errnoValue);
    default:
        return photosError(PHPhotosErrorInternalError, errnoValue);
    }
}

std::optional<NSError> nameFile(const PartialFile& file, const URL& folder, const std::string& name,
                                const std::string& extension) {
    for (int number = 1;; ++number) {
        const std::string mark = number == 1 ? "" : '-' + std::to_string(number);
        const int failure = file.name(folder.appendingPathComponent(name + mark + extension));
        if (failure == 0)
            return std::nullopt;
        if (failure != EEXIST)
            return libraryError(failure);
    }
}

} // namespace

std::optional<NSError> saveVideo(const URL& video, const URL& folder) {
    const FileDescriptor source(::open(video.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!source || ::fstat(source.get(), &status) != 0)
        return sourceError(errno);
    if (!S_ISREG(status.st_mode))
        return sourceError(EINVAL);
    std::error_code failure;
    std::filesystem::create_directories(folder.path(), failure);
    if (failure)
        return libraryError(failure.value());
    const PartialFile copy(folder);
    if (!copy)
        return libraryError(errno);
    if (const CopyOutcome copied = copyBytes(source.get(), copy.descriptor()); copied.readError)
        return sourceError(copied.readError);
    else if (copied.writeError)
        return libraryError(copied.writeError);
    const timespec times[]{status.st_atim, status.st_mtim};
    if (::futimens(copy.descriptor(), times) != 0 || ::fsync(copy.descriptor()) != 0)
        return libraryError(errno);
    const std::string extension = video.pathExtension();
    return nameFile(copy, folder, movieName(status.st_mtim.tv_sec), extension.empty() ? "" : '.' + extension);
}

} // namespace anadrome
