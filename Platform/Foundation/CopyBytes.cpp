#include "Platform/Foundation/CopyBytes.h"

#include <cerrno>
#include <cstddef>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace anadrome {

namespace {

constexpr std::size_t bufferSize = 1 << 20;

/// 0 or the system's error number.
int writeAll(int to, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(to, bytes, count);
        if (written < 0 && errno != EINTR)
            return errno;
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
    }
    return 0;
}

} // namespace

CopyOutcome copyBytes(int from, int to) {
    if (::ioctl(to, FICLONE, from) == 0)
        return {};
    std::vector<char> buffer(bufferSize);
    while (true) {
        const ssize_t count = ::read(from, buffer.data(), buffer.size());
        if (count == 0)
            return {};
        if (count < 0 && errno != EINTR)
            return {.readError = errno};
        if (count < 0)
            continue;
        if (const int failure = writeAll(to, buffer.data(), static_cast<std::size_t>(count)))
            return {.writeError = failure};
    }
}

} // namespace anadrome
