#include "Platform/CoreMedia/CMBlockBuffer.h"

#include <cstring>
#include <new>

namespace anadrome {

namespace {

constexpr std::align_val_t alignment{16};

} // namespace

CMBlockBuffer::CMBlockBuffer(std::size_t length)
    : m_bytes(static_cast<std::byte*>(::operator new[](length, alignment))), m_length(length) {}

void CMBlockBuffer::Free::operator()(std::byte* memory) const {
    ::operator delete[](memory, alignment);
}

std::size_t CMBlockBufferGetDataLength(const CMBlockBufferRef& buffer) {
    return buffer ? buffer->bytes().size() : 0;
}

OSStatus CMBlockBufferReplaceDataBytes(const void* source, const CMBlockBufferRef& destination,
                                       std::size_t offset, std::size_t length) {
    if (!source || !destination)
        return kCMBlockBufferBadPointerParameterErr;
    const std::span<std::byte> bytes = destination->bytes();
    if (offset > bytes.size())
        return kCMBlockBufferBadOffsetParameterErr;
    if (length > bytes.size() - offset)
        return kCMBlockBufferBadLengthParameterErr;
    // The source may be a part of the buffer itself.
    std::memmove(bytes.data() + offset, source, length);
    return kCMBlockBufferNoErr;
}

} // namespace anadrome
