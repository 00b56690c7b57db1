#include "Platform/Photos/SaveVideo.h"

#include "Platform/Foundation/CopyBytes.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Photos/PHPhotosError.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome {

namespace {

NSError photosError(PHPhotosErrorCode code, int errnoValue) {
    const NSError cause = NSError::posix(errnoValue);
    return {PHPhotosErrorDomain, code, "The movie couldn’t be saved: " + cause.localizedDescription() + '.',
            cause};
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

/// A file under a hidden name, which it loses when it gets its own or is given up.
class PartialFile {
public:
    explicit PartialFile(const URL& folder)
        : m_url(folder.appendingPathComponent('.' + NSProcessInfo::processInfo().globallyUniqueString() +
                                              ".part")),
          m_file(::open(m_url.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644)) {}
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    ~PartialFile() {
        if (m_file)
            ::unlink(m_url.path().c_str());
    }

    explicit operator bool() const { return static_cast<bool>(m_file); }
    int descriptor() const { return m_file.get(); }

    /// 0 or the system's error number; EEXIST if the name is taken.
    int rename(const URL& name) const {
        if (::renameat2(AT_FDCWD, m_url.path().c_str(), AT_FDCWD, name.path().c_str(), RENAME_NOREPLACE) == 0)
            return 0;
        if (errno != EINVAL)
            return errno;
        // Some file systems can't promise to replace nothing; a link can't replace either.
        return ::link(m_url.path().c_str(), name.path().c_str()) == 0 ? 0 : errno;
    }

private:
    const URL m_url;
    const FileDescriptor m_file;
};

std::string nameForTime(std::time_t time) {
    std::tm local{};
    ::localtime_r(&time, &local);
    char name[64];
    std::strftime(name, sizeof name, "%Y-%m-%d %H.%M.%S", &local);
    return name;
}

std::optional<NSError> nameFile(const PartialFile& file, const URL& folder, const std::string& name,
                                const std::string& extension) {
    for (int number = 1;; ++number) {
        const std::string mark = number == 1 ? "" : '-' + std::to_string(number);
        const int failure = file.rename(folder.appendingPathComponent(name + mark + extension));
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
    return nameFile(copy, folder, nameForTime(status.st_mtim.tv_sec),
                    extension.empty() ? "" : '.' + extension);
}

} // namespace anadrome
