#pragma once

#include <csignal>
#include <sys/resource.h>

namespace anadrome::testing_support {

/// As long as it lives, no file of this process grows beyond so many bytes: a disk that fills up.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit tight{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &tight);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    using Handler = void (*)(int);

    const Handler m_handler;
    rlimit m_old{};
};

} // namespace anadrome::testing_support
