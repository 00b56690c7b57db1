#include "Platform/CoreVideo/CVPixelBuffer.h"

#include "Platform/CoreVideo/PixelMemory.h"

#include <array>
#include <atomic>
#include <limits>
#include <map>
#include <mutex>
#include <new>
#include <optional>
#include <string>

namespace anadrome {

namespace {

constexpr std::size_t rowAlignment = 64;
constexpr std::align_val_t memoryAlignment{rowAlignment};

struct Plane {
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t bytesPerRow = 0;
    std::size_t offset = 0;
};

struct Layout {
    /// 0 if the format isn't planar; its rows are then those of the first plane here.
    std::size_t planeCount = 0;
    std::array<Plane, 2> planes;
    std::size_t totalBytes = 0;
};

/// Preconditions: both sides fit into 31 bits, and a pixel has few bytes, so that nothing overflows but the
/// plane.
Plane makePlane(std::size_t width, std::size_t height, std::size_t bytesPerPixel) {
    const std::size_t bytesPerRow = (width * bytesPerPixel + rowAlignment - 1) / rowAlignment * rowAlignment;
    return {width, height, bytesPerRow, 0};
}

/// The planes one behind another. Empty if they are too large to count their bytes.
std::optional<Layout> stacked(std::size_t planeCount, const Plane& first, const Plane& second) {
    Layout layout{planeCount, {first, second}, 0};
    for (Plane& plane : layout.planes) {
        std::size_t bytes = 0;
        plane.offset = layout.totalBytes;
        if (__builtin_mul_overflow(plane.bytesPerRow, plane.height, &bytes) ||
            __builtin_add_overflow(layout.totalBytes, bytes, &layout.totalBytes))
            return std::nullopt;
    }
    const bool isAddressable = layout.totalBytes <= std::numeric_limits<std::ptrdiff_t>::max();
    return isAddressable ? std::optional(layout) : std::nullopt;
}

std::optional<Layout> biPlanarLayout(std::size_t width, std::size_t height, std::size_t bytesPerSample) {
    const Plane luma = makePlane(width, height, bytesPerSample);
    const Plane chroma = makePlane((width + 1) / 2, (height + 1) / 2, 2 * bytesPerSample);
    return stacked(2, luma, chroma);
}

} // namespace

class CVPixelBuffer {
public:
    struct Attachment {
        Value value;
        CVAttachmentMode mode;
    };

    CVPixelBuffer(std::size_t width, std::size_t height, OSType format, const Layout& layout,
                  PixelMemory memory)
        : width(width), height(height), format(format), layout(layout), memory(std::move(memory)) {}

    const Plane* plane(std::size_t index) const {
        return index < layout.planeCount ? &layout.planes[index] : nullptr;
    }
    bool isLocked() const { return locks > 0; }

    const std::size_t width;
    const std::size_t height;
    const OSType format;
    const Layout layout;
    const PixelMemory memory;
    std::atomic<std::uint32_t> locks = 0;
    std::mutex attachmentsMutex;
    std::map<std::string, Attachment> attachments;
};

CVReturn CVPixelBufferCreate(std::size_t width, std::size_t height, OSType pixelFormat, const Dictionary&,
                             CVPixelBufferRef* out) {
    constexpr std::size_t maximumSide = std::numeric_limits<std::int32_t>::max();
    if (!out)
        return kCVReturnInvalidArgument;
    if (width == 0 || height == 0 || width > maximumSide || height > maximumSide)
        return kCVReturnInvalidSize;
    std::optional<Layout> layout;
    switch (pixelFormat) {
    case kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange:
        layout = biPlanarLayout(width, height, 1);
        break;
    case kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange:
        layout = biPlanarLayout(width, height, 2);
        break;
    case kCVPixelFormatType_32BGRA:
        layout = stacked(0, makePlane(width, height, 4), {});
        break;
    default:
        return kCVReturnInvalidPixelFormat;
    }
    if (!layout)
        return kCVReturnInvalidSize;
    PixelMemory memory = PixelMemory::allocate(layout->totalBytes);
    if (!memory)
        return kCVReturnAllocationFailed;
    *out = std::make_shared<CVPixelBuffer>(width, height, pixelFormat, *layout, std::move(memory));
    return kCVReturnSuccess;
}

std::size_t CVPixelBufferGetWidth(const CVPixelBufferRef& buffer) {
    return buffer ? buffer->width : 0;
}

std::size_t CVPixelBufferGetHeight(const CVPixelBufferRef& buffer) {
    return buffer ? buffer->height : 0;
}

OSType CVPixelBufferGetPixelFormatType(const CVPixelBufferRef& buffer) {
    return buffer ? buffer->format : 0;
}

std::size_t CVPixelBufferGetBytesPerRow(const CVPixelBufferRef& buffer) {
    return buffer ? (buffer->layout.totalBytes + buffer->height - 1) / buffer->height : 0;
}

std::size_t CVPixelBufferGetPlaneCount(const CVPixelBufferRef& buffer) {
    return buffer ? buffer->layout.planeCount : 0;
}

std::size_t CVPixelBufferGetWidthOfPlane(const CVPixelBufferRef& buffer, std::size_t plane) {
    const Plane* found = buffer ? buffer->plane(plane) : nullptr;
    return found ? found->width : 0;
}

std::size_t CVPixelBufferGetHeightOfPlane(const CVPixelBufferRef& buffer, std::size_t plane) {
    const Plane* found = buffer ? buffer->plane(plane) : nullptr;
    return found ? found->height : 0;
}

std::size_t CVPixelBufferGetBytesPerRowOfPlane(const CVPixelBufferRef& buffer, std::size_t plane) {
    const Plane* found = buffer ? buffer->plane(plane) : nullptr;
    return found ? found->bytesPerRow : 0;
}

CVReturn CVPixelBufferLockBaseAddress(const CVPixelBufferRef& buffer, std::uint64_t) {
    if (!buffer)
        return kCVReturnInvalidArgument;
    ++buffer->locks;
    return kCVReturnSuccess;
}

CVReturn CVPixelBufferUnlockBaseAddress(const CVPixelBufferRef& buffer, std::uint64_t) {
    if (!buffer)
        return kCVReturnInvalidArgument;
    std::uint32_t locks = buffer->locks;
    while (locks > 0 && !buffer->locks.compare_exchange_weak(locks, locks - 1)) {
    }
    return locks > 0 ? kCVReturnSuccess : kCVReturnInvalidArgument;
}

void* CVPixelBufferGetBaseAddress(const CVPixelBufferRef& buffer) {
    return buffer && buffer->isLocked() ? buffer->memory.get() : nullptr;
}

void* CVPixelBufferGetBaseAddressOfPlane(const CVPixelBufferRef& buffer, std::size_t plane) {
    const Plane* found = buffer && buffer->isLocked() ? buffer->plane(plane) : nullptr;
    return found ? buffer->memory.get() + found->offset : nullptr;
}

void CVBufferSetAttachments(const CVPixelBufferRef& buffer, const Dictionary& attachments,
                            CVAttachmentMode mode) {
    if (!buffer)
        return;
    std::lock_guard lock(buffer->attachmentsMutex);
    for (const auto& [key, value] : attachments)
        buffer->attachments.insert_or_assign(key, CVPixelBuffer::Attachment{value, mode});
}

Dictionary CVBufferCopyAttachments(const CVPixelBufferRef& buffer, CVAttachmentMode mode) {
    Dictionary copy;
    if (!buffer)
        return copy;
    std::lock_guard lock(buffer->attachmentsMutex);
    for (const auto& [key, attachment] : buffer->attachments) {
        if (attachment.mode == mode)
            copy.emplace(key, attachment.value);
    }
    return copy;
}

} // namespace anadrome
