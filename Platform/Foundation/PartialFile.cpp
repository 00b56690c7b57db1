#include "Platform/Foundation/PartialFile.h"

#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/RenameToFreeName.h"

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
    return renameToFreeName(m_url, url);
}

int PartialFile::nameReplacing(const URL& url) const {
    return std::rename(m_url.path().c_str(), url.path().c_str()) == 0 ? 0 : errno;
}

std::vector<URL> PartialFile::all() {
    const std::lock_guard lock(unnamed().mutex);
    return unnamed().files;
}

} // namespace anadrome
