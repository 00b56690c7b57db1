#pragma once

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/URL.h"

#include <vector>

namespace anadrome {

/// A file that is being written under a hidden name, in the folder where it is to be seen once it is whole.
/// It is removed unless it has got a name by then. One thread at a time.
class PartialFile {
public:
    /// Makes an empty file; if that fails, this is false and errno tells why.
    explicit PartialFile(const URL& folder);
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    ~PartialFile();

    explicit operator bool() const { return static_cast<bool>(m_file); }
    int descriptor() const { return m_file.get(); }

    /// Gives it a name that no file has. 0 or the system's error number; EEXIST if the name is taken.
    int name(const URL& url) const;
    /// Gives it a name and takes that from the file that has it. 0 or the system's error number.
    int nameReplacing(const URL& url) const;

    /// The files of all threads that have no name now, for whoever ends the process meanwhile.
    static std::vector<URL> all();

private:
    const URL m_url;
    const FileDescriptor m_file;
};

} // namespace anadrome
