#include "Platform/Foundation/SmallFile.h"

#include "Platform/Foundation/FileData.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/FileError.h"
#include "Platform/Foundation/UserFolders.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>

namespace anadrome {

Result<std::string> readSmallFile(const std::string& path, std::size_t maximumLength) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return fileError(FileAction::read, errno, path);
    if (!S_ISREG(status.st_mode))
        return fileError(FileAction::read, EINVAL, path);
    if (static_cast<std::size_t>(status.st_size) > maximumLength)
        return fileError(FileAction::read, EFBIG, path);
    auto data = readData(URL::fileURLWithPath(path));
    if (!data)
        return data.error();
    return std::string(reinterpret_cast<const char*>(data->data()), data->size());
}

std::optional<NSError> replaceSmallFile(const std::string& path, std::string_view content) {
    if (path.empty())
        return fileError(FileAction::write, ENOENT, path);
    makePrivateFolders(URL::fileURLWithPath(path).deletingLastPathComponent().path());
    std::string unfinished = path + ".XXXXXX";
    if (!FileDescriptor(::mkostemp(unfinished.data(), O_CLOEXEC)))
        return fileError(FileAction::write, errno, path);
    if (auto error = writeData(URL::fileURLWithPath(unfinished), std::as_bytes(std::span(content))))
        return error;
    if (std::rename(unfinished.c_str(), path.c_str()) == 0)
        return std::nullopt;
    const int failure = errno;
    std::remove(unfinished.c_str());
    return fileError(FileAction::write, failure, path);
}

} // namespace anadrome
