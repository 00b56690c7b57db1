#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace anadrome {

using OSStatus = std::int32_t;

enum CMBlockBufferStatus : OSStatus {
    kCMBlockBufferNoErr = 0,
    kCMBlockBufferBadLengthParameterErr = -12704,
    kCMBlockBufferBadOffsetParameterErr = -12703,
    kCMBlockBufferBadPointerParameterErr = -12705,
};

/// Bytes of one or more samples in one piece, aligned to 16 bytes. Shared by reference; not locked.
class CMBlockBuffer {
public:
    explicit CMBlockBuffer(std::size_t length);

    std::span<std::byte> bytes() { return {m_bytes.get(), m_length}; }
    std::span<const std::byte> bytes() const { return {m_bytes.get(), m_length}; }

private:
    struct Free {
        void operator()(std::byte* memory) const;
    };
    std::unique_ptr<std::byte[], Free> m_bytes;
    std::size_t m_length;
};

using CMBlockBufferRef = std::shared_ptr<CMBlockBuffer>;

std::size_t CMBlockBufferGetDataLength(const CMBlockBufferRef& buffer);
/// A range outside the buffer is an error and leaves the content untouched.
OSStatus CMBlockBufferReplaceDataBytes(const void* source, const CMBlockBufferRef& destination,
                                       std::size_t offset, std::size_t length);

} // namespace anadrome
