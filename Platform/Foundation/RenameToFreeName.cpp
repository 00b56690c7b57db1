#include "Platform/Foundation/RenameToFreeName.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace anadrome {

int renameToFreeName(const URL& from, const URL& to) {
    if (::renameat2(AT_FDCWD, from.path().c_str(), AT_FDCWD, to.path().c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL)
        return errno;
    // A link can't replace either.
    return ::link(from.path().c_str(), to.path().c_str()) == 0 ? 0 : errno;
}

} // namespace anadrome
