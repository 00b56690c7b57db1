#include "Platform/CoreVideo/CVPixelBuffer.h"

#include "Platform/CoreVideo/PixelMemory.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace anadrome {

namespace {

constexpr std::size_t rowAlignment = 64;

struct Plane {
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t bytesPerRow = 0;
    std::byte* address = nullptr;
};

struct Layout {
    /// 0 if the format isn't planar; its rows are then those of the first plane here.
    std::size_t planeCount = 0;
    std::array<Plane, 3> planes;
    std::size_t totalBytes = 0;
};

/// Preconditions: both sides fit into 31 bits, and a pixel has few bytes, so that nothing overflows but the
/// plane.
Plane makePlane(std::size_t width, std::size_t height, std::size_t bytesPerPixel) {
    const std::size_t bytesPerRow = (width * bytesPerPixel + rowAlignment - 1) / rowAlignment * rowAlignment;
    return {width, height, bytesPerRow};
}

/// The planes without addresses. Empty if they are too large to count their bytes.
std::optional<Layout> stacked(std::size_t planeCount, const std::array<Plane, 3>& planes) {
    Layout layout{planeCount, planes, 0};
    for (const Plane& plane : layout.planes) {
        std::size_t bytes = 0;
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
    return stacked(2, {luma, chroma});
}

std::optional<Layout> planarLayout(std::size_t width, std::size_t height, std::size_t bytesPerSample) {
    const Plane luma = makePlane(width, height, bytesPerSample);
    const Plane chroma = makePlane((width + 1) / 2, (height + 1) / 2, bytesPerSample);
    return stacked(3, {luma, chroma, chroma});
}

std::optional<Layout> layoutFor(std::size_t width, std::size_t height, OSType pixelFormat) {
    switch (pixelFormat) {
    case kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange:
        return biPlanarLayout(width, height, 1);
    case kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange:
        return biPlanarLayout(width, height, 2);
    case kCVPixelFormatType_420YpCbCr8Planar:
        return planarLayout(width, height, 1);
    case kCVPixelFormatType_420YpCbCr10Planar:
        return planarLayout(width, height, 2);
    default:
        return stacked(0, {makePlane(width, height, 4)});
    }
}

bool isKnown(OSType pixelFormat) {
    constexpr OSType known[] = {
        kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange, kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange,
        kCVPixelFormatType_420YpCbCr8Planar, kCVPixelFormatType_420YpCbCr10Planar, kCVPixelFormatType_32BGRA};
    return std::ranges::find(known, pixelFormat) != std::end(known);
}

CVReturn makeLayout(std::size_t width, std::size_t height, OSType pixelFormat, Layout& layout) {
    constexpr std::size_t maximumSide = std::numeric_limits<std::int32_t>::max();
    if (width == 0 || height == 0 || width > maximumSide || height > maximumSide)
        return kCVReturnInvalidSize;
    if (!isKnown(pixelFormat))
        return kCVReturnInvalidPixelFormat;
    const std::optional<Layout> made = layoutFor(width, height, pixelFormat);
    if (!made)
        return kCVReturnInvalidSize;
    layout = *made;
    return kCVReturnSuccess;
}

} // namespace

class CVPixelBuffer {
public:
    struct Attachment {
        Value value;
        CVAttachmentMode mode;
    };

    /// The owner keeps the planes alive.
    CVPixelBuffer(std::size_t width, std::size_t height, OSType format, const Layout& layout,
                  std::shared_ptr<const void> owner)
        : width(width), height(height), format(format), layout(layout), owner(std::move(owner)) {}

    const Plane* plane(std::size_t index) const {
        return index < layout.planeCount ? &layout.planes[index] : nullptr;
    }
    bool isLocked() const { return locks > 0; }

    const std::size_t width;
    const std::size_t height;
    const OSType format;
    const Layout layout;
    const std::shared_ptr<const void> owner;
    std::atomic<std::uint32_t> locks = 0;
    std::mutex attachmentsMutex;
    std::map<std::string, Attachment> attachments;
};

CVReturn CVPixelBufferCreate(std::size_t width, std::size_t height, OSType pixelFormat, const Dictionary&,
                             CVPixelBufferRef* out) {
    if (!out)
        return kCVReturnInvalidArgument;
    Layout layout;
    if (const CVReturn result = makeLayout(width, height, pixelFormat, layout); result != kCVReturnSuccess)
        return result;
    auto memory = std::make_shared<PixelMemory>(PixelMemory::allocate(layout.totalBytes));
    if (!*memory)
        return kCVReturnAllocationFailed;
    std::byte* next = memory->get();
    for (Plane& plane : layout.planes) {
        plane.address = next;
        next += plane.bytesPerRow * plane.height;
    }
    *out = std::make_shared<CVPixelBuffer>(width, height, pixelFormat, layout, std::move(memory));
    return kCVReturnSuccess;
}

CVReturn CVPixelBufferCreateWithPlanarBytes(std::size_t width, std::size_t height, OSType pixelFormat,
                                            std::span<const CVPlaneBytes> planes,
                                            std::shared_ptr<const void> owner, CVPixelBufferRef* out) {
    if (!out)
        return kCVReturnInvalidArgument;
    Layout layout;
    if (const CVReturn result = makeLayout(width, height, pixelFormat, layout); result != kCVReturnSuccess)
        return result;
    if (layout.planeCount == 0 || planes.size() != layout.planeCount)
        return kCVReturnInvalidArgument;
    layout.totalBytes = 0;
    for (std::size_t i = 0; i < planes.size(); ++i) {
        layout.planes[i].address = planes[i].address;
        layout.planes[i].bytesPerRow = planes[i].bytesPerRow;
        layout.totalBytes += planes[i].bytesPerRow * layout.planes[i].height;
    }
    *out = std::make_shared<CVPixelBuffer>(width, height, pixelFormat, layout, std::move(owner));
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
    return buffer && buffer->isLocked() ? buffer->layout.planes[0].address : nullptr;
}

void* CVPixelBufferGetBaseAddressOfPlane(const CVPixelBufferRef& buffer, std::size_t plane) {
    const Plane* found = buffer && buffer->isLocked() ? buffer->plane(plane) : nullptr;
    return found ? found->address : nullptr;
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
