#include "Platform/Foundation/FileData.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/FileError.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace anadrome {

namespace {

/// What transferAll() gives when the file ended early; no error number of the system is negative.
constexpr int endOfFile = -1;

/// A larger write makes the kernel look for larger pieces of memory to keep it in, which took four times as
/// long for the frames of a clip.
constexpr std::size_t largestTransfer = 256 << 10;

/// Repeats read() or write() until all pieces are through. 0, the system's error number, or endOfFile.
template <typename Transfer, typename Byte>
int transferAll(Transfer transfer, int descriptor, std::span<const std::span<Byte>> pieces) {
    for (std::span<Byte> rest : pieces)
        while (!rest.empty()) {
            const ssize_t moved = transfer(descriptor, rest.data(), std::min(rest.size(), largestTransfer));
            if (moved == 0)
                return endOfFile;
            if (moved < 0 && errno != EINTR)
                return errno;
            if (moved > 0)
                rest = rest.subspan(static_cast<std::size_t>(moved));
        }
    return 0;
}

/// 0 or the system's error number. A file that close() fails on may have lost what was written.
int writeAndClose(FileDescriptor file, std::span<const std::span<const std::byte>> pieces) {
    if (const int failure = transferAll(::write, file.get(), pieces))
        return failure == endOfFile ? EIO : failure;
    return ::close(file.release()) == 0 || errno == EINTR ? 0 : errno;
}

bool isRegularFile(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::optional<NSError> writeData(const URL& url, std::span<const std::span<const std::byte>> pieces) {
    const char* path = url.path().c_str();
    FileDescriptor file(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!file)
        return fileError(FileAction::write, errno, url.path());
    // A device or a pipe that a path may stand for isn't ours to remove.
    const bool isRemovable = isRegularFile(file.get());
    const int failure = writeAndClose(std::move(file), pieces);
    if (failure == 0)
        return std::nullopt;
    if (isRemovable)
        ::unlink(path);
    return fileError(FileAction::write, failure, url.path());
}

std::optional<NSError> writeData(const URL& url, std::span<const std::byte> bytes) {
    return writeData(url, std::span(&bytes, 1));
}

Result<NSData> readData(const URL& url) {
    const FileDescriptor file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0)
        return fileError(FileAction::read, errno, url.path());
    // One byte more than the file is said to have, so that the end is met without growing. Some files have
    // more.
    NSData data(static_cast<std::size_t>(status.st_size) + 1);
    std::size_t filled = 0;
    while (true) {
        const ssize_t got = ::read(file.get(), data.data() + filled, data.size() - filled);
        if (got == 0)
            break;
        if (got < 0 && errno != EINTR)
            return fileError(FileAction::read, errno, url.path());
        filled += got > 0 ? static_cast<std::size_t>(got) : 0;
        if (filled == data.size())
            data.resize(std::max<std::size_t>(2 * data.size(), 4096));
    }
    data.resize(filled);
    return data;
}

Result<FileReader> FileReader::open(const URL& url) {
    FileDescriptor file(::open(url.path().c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        return fileError(FileAction::read, errno, url.path());
    return FileReader(std::move(file));
}

std::size_t FileReader::size() const {
    struct stat status {};
    return ::fstat(m_file.get(), &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

bool FileReader::read(std::span<const std::span<std::byte>> pieces) {
    return transferAll(::read, m_file.get(), pieces) == 0;
}

} // namespace anadrome
