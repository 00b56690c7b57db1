#include "Platform/Foundation/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace anadrome {

FileDescriptor openLocked(const std::string& path, int extraOpenFlags, bool wait) {
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | extraOpenFlags, 0600));
    if (!file)
        return {};
    while (::flock(file.get(), LOCK_EX | (wait ? 0 : LOCK_NB)) != 0) {
        if (errno != EINTR)
            return {};
    }
    return file;
}

} // namespace anadrome
