#include "Terminal/OutputFile.h"

#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSProcessInfo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

URL hiddenNameBeside(const URL& url) {
    return url.deletingLastPathComponent().appendingPathComponent(
        "." + NSProcessInfo::processInfo().globallyUniqueString() + ".part");
}

std::string systemMessage(const std::string& path, int error) {
    return path + ": " + std::strerror(error);
}

// Both give 0 or the system's error number.
int rename(const URL& from, const URL& to) {
    return std::rename(from.path().c_str(), to.path().c_str()) == 0 ? 0 : errno;
}

int renameToFreeName(const URL& from, const URL& to) {
    if (::renameat2(AT_FDCWD, from.path().c_str(), AT_FDCWD, to.path().c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL)
        return errno;
    // Some file systems can't promise that; a link can't replace either, and the old name is dropped
    // afterwards.
    return ::link(from.path().c_str(), to.path().c_str()) == 0 ? 0 : errno;
}

} // namespace

OutputFile::OutputFile(const std::string& path, bool replaceExisting)
    : m_final(URL::fileURLWithPath(path)), m_partial(hiddenNameBeside(m_final)),
      m_replaceExisting(replaceExisting) {}

OutputFile::~OutputFile() {
    ::unlink(m_partial.path().c_str());
}

std::optional<std::string> OutputFile::obstacle() const {
    const std::string folder = m_final.deletingLastPathComponent().path();
    bool isDirectory = false;
    const bool exists = NSFileManager::defaultManager().fileExistsAtPath(m_final.path(), &isDirectory);
    if (exists && isDirectory)
        return systemMessage(m_final.path(), EISDIR);
    if (exists && !m_replaceExisting)
        return m_final.path() + ": exists already; --force replaces it";
    if (NSFileManager::defaultManager().fileExistsAtPath(folder, &isDirectory) && !isDirectory)
        return systemMessage(folder, ENOTDIR);
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        return systemMessage(folder, errno);
    return std::nullopt;
}

std::optional<std::string> OutputFile::putInPlace() {
    const int failure = m_replaceExisting ? rename(m_partial, m_final) : renameToFreeName(m_partial, m_final);
    return failure == 0 ? std::nullopt : std::optional(systemMessage(m_final.path(), failure));
}

} // namespace anadrome::terminal
