#include "Platform/Foundation/PartialFile.h"

#include "Platform/Foundation/NSProcessInfo.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <unistd.h>

namespace anadrome {

namespace {

struct Unnamed {
    std::mutex mutex;
    std::vector<URL> files;
};

Unnamed& unnamed() {
    static Unnamed instance;
    return instance;
}

} // namespace

PartialFile::PartialFile(const URL& folder)
    : m_url(
          folder.appendingPathComponent('.' + NSProcessInfo::processInfo().globallyUniqueString() + ".part")),
      m_file(::open(m_url.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644)) {
    const int openError = errno;
    {
        const std::lock_guard lock(unnamed().mutex);
        unnamed().files.push_back(m_url);
    }
    errno = openError;
}

PartialFile::~PartialFile() {
    if (m_file)
        ::unlink(m_url.path().c_str());
    const std::lock_guard lock(unnamed().mutex);
    std::erase(unnamed().files, m_url);
}

int PartialFile::name(const URL& url) const {
    if (::renameat2(AT_FDCWD, m_url.path().c_str(), AT_FDCWD, url.path().c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL)
        return errno;
    // Some file systems can't promise to replace nothing; a link can't replace either.
    return ::link(m_url.path().c_str(), url.path().c_str()) == 0 ? 0 : errno;
}

int PartialFile::nameReplacing(const URL& url) const {
    return std::rename(m_url.path().c_str(), url.path().c_str()) == 0 ? 0 : errno;
}

std::vector<URL> PartialFile::all() {
    const std::lock_guard lock(unnamed().mutex);
    return unnamed().files;
}

} // namespace anadrome
