#pragma once

#include <cstddef>
#include <memory>

namespace anadrome {

/// Memory for the pixels of one buffer, aligned to 64 bytes; its content is undefined.
///
/// A movie goes through thousands of buffers of one size, a few at a time. Large blocks that come free are
/// kept, up to 64 MB of them, for the next buffer of the same size: memory fresh from the kernel is cleared
/// page by page at first touch, which took as long as reading a frame's bytes. Any thread.
class PixelMemory {
public:
    /// Empty if there is no memory.
    static PixelMemory allocate(std::size_t size);

    explicit operator bool() const { return m_bytes != nullptr; }
    std::byte* get() const { return m_bytes.get(); }

private:
    PixelMemory(std::byte* bytes, std::size_t size) : m_bytes(bytes, GiveBack{size}) {}

    struct GiveBack {
        std::size_t size;
        void operator()(std::byte* bytes) const;
    };
    std::unique_ptr<std::byte, GiveBack> m_bytes;
};

} // namespace anadrome
