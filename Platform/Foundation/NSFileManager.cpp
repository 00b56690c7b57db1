#include "Platform/Foundation/NSFileManager.h"

#include "Platform/Foundation/FileError.h"
#include "Platform/Foundation/TemporaryDirectory.h"

#include <cerrno>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace anadrome {

namespace {

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// 0 or the system's error number. Another process that makes the same folders meanwhile is no obstacle.
int makeFolders(const std::string& path) {
    constexpr mode_t mode = 0777;
    if (::mkdir(path.c_str(), mode) == 0)
        return 0;
    int failure = errno;
    const std::string parent = URL::fileURLWithPath(path).deletingLastPathComponent().path();
    if (failure == ENOENT && !parent.empty() && parent != "/") {
        if (const int parentFailure = makeFolders(parent))
            return parentFailure;
        failure = ::mkdir(path.c_str(), mode) == 0 ? 0 : errno;
    }
    return failure != 0 && isFolder(path) ? 0 : failure;
}

/// A slash at the end would make the system follow a link that is to be removed itself.
std::string withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return std::string(path);
}

} // namespace

NSFileManager& NSFileManager::defaultManager() {
    static NSFileManager manager;
    return manager;
}

URL NSFileManager::temporaryDirectory() const {
    return TemporaryDirectory::current();
}

bool NSFileManager::fileExistsAtPath(const std::string& path, bool* isDirectory) const {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return false;
    if (isDirectory)
        *isDirectory = S_ISDIR(status.st_mode);
    return true;
}

std::optional<NSError> NSFileManager::createDirectoryAtPath(const std::string& path,
                                                            bool withIntermediateDirectories) const {
    int failure = 0;
    if (withIntermediateDirectories)
        failure = makeFolders(path);
    else if (::mkdir(path.c_str(), 0777) != 0)
        failure = errno;
    if (failure == 0)
        return std::nullopt;
    return fileError(FileAction::createFolder, failure, path);
}

Result<std::vector<std::string>> NSFileManager::contentsOfDirectoryAtPath(const std::string& path) const {
    struct Close {
        void operator()(DIR* folder) const { ::closedir(folder); }
    };
    const std::unique_ptr<DIR, Close> folder(::opendir(path.c_str()));
    if (!folder)
        return fileError(FileAction::read, errno, path);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    // The end leaves errno alone; only a failure sets it.
    if (errno != 0)
        return fileError(FileAction::read, errno, path);
    return names;
}

std::optional<NSError> NSFileManager::removeItemAtPath(const std::string& path) const {
    // The standard library (GCC's from 12 on) opens every folder relative to its parent and refuses links, so
    // one that somebody swaps in meanwhile isn't followed either.
    std::error_code failure;
    const std::uintmax_t removed = std::filesystem::remove_all(withoutTrailingSlashes(path), failure);
    if (failure)
        return fileError(FileAction::remove, failure.value(), path);
    if (removed == 0)
        return fileError(FileAction::remove, ENOENT, path);
    return std::nullopt;
}

Result<Dictionary> NSFileManager::attributesOfItemAtPath(const std::string& path) const {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0)
        return fileError(FileAction::read, errno, path);
    return Dictionary{{NSFileSize, std::int64_t{status.st_size}}};
}

} // namespace anadrome
