#include "Platform/CoreVideo/PixelMemory.h"

#include <mutex>
#include <new>
#include <vector>

namespace anadrome {

namespace {

constexpr std::align_val_t alignment{64};
constexpr std::size_t mostKeptBytes = 64 << 20;

void release(std::byte* bytes) {
    ::operator delete(bytes, alignment);
}

/// Free blocks, all of the size that was asked for last.
class FreeBlocks {
public:
    /// Never destroyed: buffers may outlive the other objects of the program.
    static FreeBlocks& shared() {
        static auto& blocks = *new FreeBlocks;
        return blocks;
    }

    /// Null if none of this size is free.
    std::byte* take(std::size_t size) {
        const std::lock_guard lock(m_mutex);
        if (size != m_size) {
            for (std::byte* bytes : m_blocks)
                release(bytes);
            m_blocks.clear();
            m_size = size;
        }
        if (m_blocks.empty())
            return nullptr;
        std::byte* bytes = m_blocks.back();
        m_blocks.pop_back();
        return bytes;
    }

    void give(std::byte* bytes, std::size_t size) {
        {
            const std::lock_guard lock(m_mutex);
            if (size == m_size && (m_blocks.size() + 1) * size <= mostKeptBytes) {
                m_blocks.push_back(bytes);
                return;
            }
        }
        release(bytes);
    }

private:
    std::mutex m_mutex;
    std::size_t m_size = 0;
    std::vector<std::byte*> m_blocks;
};

} // namespace

PixelMemory PixelMemory::allocate(std::size_t size) {
    std::byte* bytes = FreeBlocks::shared().take(size);
    if (!bytes)
        bytes = static_cast<std::byte*>(::operator new(size, alignment, std::nothrow));
    return PixelMemory(bytes, size);
}

void PixelMemory::GiveBack::operator()(std::byte* bytes) const {
    FreeBlocks::shared().give(bytes, size);
}

} // namespace anadrome
