#include "Platform/Foundation/CopyBytes.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/FileError.h"
#include "Platform/Foundation/NSFileManager.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome {

std::optional<NSError> NSFileManager::copyItemAtURL(const URL& source, const URL& target) const {
    const auto readError = [&](int number) { return fileError(FileAction::read, number, source.path()); };
    const auto writeError = [&](int number) { return fileError(FileAction::write, number, target.path()); };
    const FileDescriptor from(::open(source.path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!from || ::fstat(from.get(), &status) != 0)
        return readError(errno);
    if (!S_ISREG(status.st_mode))
        return readError(EINVAL);
    FileDescriptor to(::open(target.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!to)
        return writeError(errno);
    CopyOutcome copied = copyBytes(from.get(), to.get());
    const timespec times[]{status.st_atim, status.st_mtim};
    ::fchmod(to.get(), (status.st_mode & 0777) | S_IRUSR | S_IWUSR);
    ::futimens(to.get(), times);
    // Over a network only this may tell of a full disk.
    if (::close(to.release()) != 0 && copied.writeError == 0)
        copied.writeError = errno;
    if (copied.readError == 0 && copied.writeError == 0)
        return std::nullopt;
    ::unlink(target.path().c_str());
    return copied.readError != 0 ? readError(copied.readError) : writeError(copied.writeError);
}

} // namespace anadrome
