#include "Desktop/System/CopyReplacing.h"

#include "Platform/Foundation/CopyBytes.h"
#include "Platform/Foundation/FileError.h"
#include "Platform/Foundation/PartialFile.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>

namespace anadrome::desktop {

namespace {

/// Where a link leads: what it names is to be replaced, and not the link.
URL behindLinks(const URL& url) {
    std::error_code failure;
    const std::filesystem::path path = std::filesystem::canonical(url.path(), failure);
    return failure ? url : URL::fileURLWithPath(path.string());
}

} // namespace

std::optional<NSError> copyReplacing(const URL& source, const URL& target) {
    const auto writeError = [&](int number) { return fileError(FileAction::write, number, target.path()); };
    const FileDescriptor from(::open(source.path().c_str(), O_RDONLY | O_CLOEXEC));
    if (!from)
        return fileError(FileAction::read, errno, source.path());
    const URL place = behindLinks(target);
    const PartialFile copy(place.deletingLastPathComponent());
    if (!copy)
        return writeError(errno);
    if (const CopyOutcome copied = copyBytes(from.get(), copy.descriptor()); copied.readError)
        return fileError(FileAction::read, copied.readError, source.path());
    else if (copied.writeError)
        return writeError(copied.writeError);
    // Over a network only this may tell of a full disk.
    if (::fsync(copy.descriptor()) != 0)
        return writeError(errno);
    if (const int failure = copy.nameReplacing(place))
        return writeError(failure);
    return std::nullopt;
}

} // namespace anadrome::desktop
