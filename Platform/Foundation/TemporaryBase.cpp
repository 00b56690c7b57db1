#include "Platform/Foundation/TemporaryBase.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/UserFolders.h"

#include <algorithm>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace anadrome {

namespace {

/// Whether others can put entries, and so links, into a folder.
bool isSharedFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

} // namespace

std::vector<std::string> temporaryBaseCandidates() {
    std::vector<std::string> bases;
    const std::string cache = userCacheFolder();
    if (!cache.empty())
        bases.push_back(URL::fileURLWithPath(cache + "/anadrome").path());
    const std::string ownName = "/anadrome-" + std::to_string(::geteuid());
    bases.push_back("/var/tmp" + ownName);
    bases.push_back("/tmp" + ownName);
    return bases;
}

bool prepareTemporaryBase(const std::string& base) {
    makePrivateFolders(base);
    const bool isShared = isSharedFolder(base.substr(0, base.rfind('/')));
    const FileDescriptor folder(
        ::open(base.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isShared ? O_NOFOLLOW : 0)));
    struct stat status {};
    if (!folder || ::fstat(folder.get(), &status) != 0 || status.st_uid != ::geteuid())
        return false;
    const bool isClosed = (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return (!isShared || isClosed) && ::faccessat(folder.get(), ".", W_OK | X_OK, AT_EACCESS) == 0;
}

bool liesOnDisk(const std::string& path) {
    struct statfs status {};
    if (::statfs(path.c_str(), &status) != 0)
        return false;
    return status.f_type != TMPFS_MAGIC && status.f_type != RAMFS_MAGIC;
}

bool isProcessFolderName(std::string_view name) {
    constexpr std::size_t anyLength = 0;
    constexpr std::size_t fieldLengths[] = {8, 4, 4, 4, 12, anyLength, 16};
    for (const std::size_t length : fieldLengths) {
        const std::string_view field = name.substr(0, name.find('-'));
        const bool isLongEnough = length == anyLength ? !field.empty() : field.size() == length;
        if (!isLongEnough || field.find_first_not_of("0123456789ABCDEF") != field.npos)
            return false;
        name.remove_prefix(std::min(field.size() + 1, name.size()));
    }
    return name.empty();
}

} // namespace anadrome
