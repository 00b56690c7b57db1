#pragma once

#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace anadrome::testing_support {

/// Makes a file look as if it was last written to then, in seconds since 1970.
inline void setModified(const std::string& path, std::time_t seconds) {
    const timespec times[]{{seconds, 0}, {seconds, 0}};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

} // namespace anadrome::testing_support
