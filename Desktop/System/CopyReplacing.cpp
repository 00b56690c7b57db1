#include "Desktop/System/CopyReplacing.h"

#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSProcessInfo.h"

#include <cerrno>
#include <cstdio>

namespace anadrome::desktop {

std::optional<NSError> copyReplacing(const URL& source, const URL& target) {
    const URL partial = target.deletingLastPathComponent().appendingPathComponent(
        '.' + NSProcessInfo::processInfo().globallyUniqueString() + ".part");
    const NSFileManager& files = NSFileManager::defaultManager();
    if (const auto error = files.copyItemAtURL(source, partial))
        return error;
    if (std::rename(partial.path().c_str(), target.path().c_str()) == 0)
        return std::nullopt;
    const NSError error = NSError::posix(errno);
    files.removeItemAtPath(partial.path());
    return error;
}

} // namespace anadrome::desktop
