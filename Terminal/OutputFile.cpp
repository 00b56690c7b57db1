#include "Terminal/OutputFile.h"

#include "Platform/Foundation/CopyBytes.h"
#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/RenameToFreeName.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

URL hiddenNameBeside(const URL& url) {
    const std::string name = '.' + NSProcessInfo::processInfo().globallyUniqueString() + ".part";
    return url.deletingLastPathComponent().appendingPathComponent(name);
}

std::string systemMessage(const std::string& path, int error) {
    return path + ": " + std::strerror(error);
}

// They give 0 or the system's error number.
int rename(const URL& from, const URL& to) {
    return std::rename(from.path().c_str(), to.path().c_str()) == 0 ? 0 : errno;
}

int copyFile(const URL& from, const URL& to) {
    const FileDescriptor source(::open(from.path().c_str(), O_RDONLY | O_CLOEXEC));
    const FileDescriptor copy(::open(to.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!source || !copy)
        return errno;
    const CopyOutcome outcome = copyBytes(source.get(), copy.get());
    return outcome.readError ? outcome.readError : outcome.writeError;
}

} // namespace

OutputFile::OutputFile(const std::string& path, bool replaceExisting)
    : m_final(URL::fileURLWithPath(path)), m_partial(hiddenNameBeside(m_final)),
      m_replaceExisting(replaceExisting) {}

OutputFile::~OutputFile() {
    ::unlink(m_partial.path().c_str());
}

std::optional<std::string> OutputFile::obstacle() const {
    if (std::optional<std::string> message = obstacleInPlace())
        return message;
    const std::string folder = m_final.deletingLastPathComponent().path();
    return ::access(folder.c_str(), W_OK | X_OK) == 0 ? std::nullopt
                                                      : std::optional(systemMessage(folder, errno));
}

/// What stands at the movie's place may be replaced only if it is a plain file: not a link, and not a device
/// that happens to have a name.
std::optional<std::string> OutputFile::obstacleInPlace() const {
    struct stat status {};
    if (::lstat(m_final.path().c_str(), &status) != 0)
        return errno == ENOENT ? std::nullopt : std::optional(systemMessage(m_final.path(), errno));
    if (S_ISDIR(status.st_mode))
        return systemMessage(m_final.path(), EISDIR);
    if (!S_ISREG(status.st_mode))
        return m_final.path() + ": is no plain file";
    if (!m_replaceExisting)
        return m_final.path() + ": exists already; --force replaces it";
    return std::nullopt;
}

std::optional<std::string> OutputFile::moveHere(const URL& file) const {
    const int failure = rename(file, m_partial);
    if (failure == 0)
        return std::nullopt;
    if (failure != EXDEV)
        return systemMessage(m_final.path(), failure);
    if (const int copyFailure = copyFile(file, m_partial))
        return systemMessage(m_final.path(), copyFailure);
    ::unlink(file.path().c_str());
    return std::nullopt;
}

std::optional<std::string> OutputFile::putInPlace() {
    const int failure = m_replaceExisting ? rename(m_partial, m_final) : renameToFreeName(m_partial, m_final);
    return failure == 0 ? std::nullopt : std::optional(systemMessage(m_final.path(), failure));
}

} // namespace anadrome::terminal
