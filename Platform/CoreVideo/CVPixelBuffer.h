#pragma once

#include "Platform/CoreVideo/CVImageBufferKeys.h"
#include "Platform/Foundation/NSDictionary.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace anadrome {

using CVReturn = std::int32_t;
using OSType = std::uint32_t;

enum : CVReturn {
    kCVReturnSuccess = 0,
    kCVReturnError = -6660,
    kCVReturnInvalidArgument = -6661,
    kCVReturnAllocationFailed = -6662,
    kCVReturnInvalidPixelFormat = -6680,
    kCVReturnInvalidSize = -6681,
};

/// '420v': 8 bits, luma 16 to 235 in plane 0, interleaved Cb and Cr in plane 1.
inline constexpr OSType kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange = 0x34323076;
/// 'x420': the same planes with 16-bit little-endian words, the sample in the ten most significant bits.
inline constexpr OSType kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange = 0x78343230;
/// 'y420': 8 bits, luma 16 to 235, then Cb, then Cr, a plane each.
inline constexpr OSType kCVPixelFormatType_420YpCbCr8Planar = 0x79343230;
/// The same three planes with 16-bit little-endian words, the sample in the ten least significant bits. Our
/// own: the form in which decoders give and encoders take ten bits.
inline constexpr OSType kCVPixelFormatType_420YpCbCr10Planar = 0x79344130;
/// 'BGRA': one plane of four bytes a pixel; not a planar format.
inline constexpr OSType kCVPixelFormatType_32BGRA = 0x42475241;

inline constexpr const char* kCVPixelBufferPixelFormatTypeKey = "PixelFormatType";
inline constexpr const char* kCVPixelBufferWidthKey = "Width";
inline constexpr const char* kCVPixelBufferHeightKey = "Height";
inline constexpr const char* kCVPixelBufferIOSurfacePropertiesKey = "IOSurfaceProperties";
inline constexpr const char* kCVPixelBufferMetalCompatibilityKey = "MetalCompatibility";
inline constexpr const char* kCVPixelBufferCGImageCompatibilityKey = "CGImageCompatibility";
inline constexpr const char* kCVPixelBufferCGBitmapContextCompatibilityKey = "CGBitmapContextCompatibility";

enum CVPixelBufferLockFlags : std::uint64_t { kCVPixelBufferLock_ReadOnly = 1 };
enum CVAttachmentMode : std::uint32_t {
    kCVAttachmentMode_ShouldNotPropagate = 0,
    kCVAttachmentMode_ShouldPropagate = 1
};

/// A picture in memory: planes of rows, and attachments by key. Shared by reference. The pixels aren't
/// guarded: one thread writes before it hands the buffer on. Every row of every plane of a buffer that
/// CVPixelBufferCreate made takes a multiple of 64 bytes, so one made anew with the same width, height and
/// format has the same row sizes. Addresses may be taken only while the base address is locked.
class CVPixelBuffer;
using CVPixelBufferRef = std::shared_ptr<CVPixelBuffer>;
using CVImageBufferRef = CVPixelBufferRef;

/// The attributes are accepted and ignored: they matter to hardware only, and colour belongs into
/// attachments. Pixels start undefined.
CVReturn CVPixelBufferCreate(std::size_t width, std::size_t height, OSType pixelFormat,
                             const Dictionary& attributes, CVPixelBufferRef* out);

/// Where a plane lies that belongs to somebody else.
struct CVPlaneBytes {
    std::byte* address = nullptr;
    std::size_t bytesPerRow = 0;
};

/// A planar buffer over planes that exist already; the owner is let go with the buffer. Rows need no
/// particular size.
CVReturn CVPixelBufferCreateWithPlanarBytes(std::size_t width, std::size_t height, OSType pixelFormat,
                                            std::span<const CVPlaneBytes> planes,
                                            std::shared_ptr<const void> owner, CVPixelBufferRef* out);

std::size_t CVPixelBufferGetWidth(const CVPixelBufferRef& buffer);
std::size_t CVPixelBufferGetHeight(const CVPixelBufferRef& buffer);
OSType CVPixelBufferGetPixelFormatType(const CVPixelBufferRef& buffer);
/// Of a planar buffer: the bytes of all planes divided by the height, rounded up, so that this times the
/// height covers the buffer. Of another: its row size.
std::size_t CVPixelBufferGetBytesPerRow(const CVPixelBufferRef& buffer);

/// 0 for a format that isn't planar; then the …OfPlane functions give 0 and null.
std::size_t CVPixelBufferGetPlaneCount(const CVPixelBufferRef& buffer);
std::size_t CVPixelBufferGetWidthOfPlane(const CVPixelBufferRef& buffer, std::size_t plane);
std::size_t CVPixelBufferGetHeightOfPlane(const CVPixelBufferRef& buffer, std::size_t plane);
std::size_t CVPixelBufferGetBytesPerRowOfPlane(const CVPixelBufferRef& buffer, std::size_t plane);

/// Locks nest. Unlock with the flags of the lock; without a lock it is InvalidArgument.
CVReturn CVPixelBufferLockBaseAddress(const CVPixelBufferRef& buffer, std::uint64_t flags);
CVReturn CVPixelBufferUnlockBaseAddress(const CVPixelBufferRef& buffer, std::uint64_t flags);
/// Null while the buffer isn't locked.
void* CVPixelBufferGetBaseAddress(const CVPixelBufferRef& buffer);
void* CVPixelBufferGetBaseAddressOfPlane(const CVPixelBufferRef& buffer, std::size_t plane);

/// Replaces the value and the mode of each key.
void CVBufferSetAttachments(const CVPixelBufferRef& buffer, const Dictionary& attachments,
                            CVAttachmentMode mode);
/// The attachments of one mode.
Dictionary CVBufferCopyAttachments(const CVPixelBufferRef& buffer, CVAttachmentMode mode);

} // namespace anadrome
