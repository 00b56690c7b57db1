#pragma once

#include <unistd.h>
#include <utility>

namespace anadrome {

/// Owner of an open file descriptor; -1 is none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(other.release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor = -1;
};

} // namespace anadrome
