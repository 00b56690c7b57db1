#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <gtest/gtest.h>

using namespace anadrome;

namespace {

constexpr OSType eightBit = kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange;
constexpr OSType tenBit = kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange;

CVPixelBufferRef make(std::size_t width, std::size_t height, OSType format) {
    CVPixelBufferRef buffer;
    EXPECT_EQ(CVPixelBufferCreate(width, height, format, {}, &buffer), kCVReturnSuccess);
    return buffer;
}

} // namespace

TEST(CVPixelBuffer, LaysOutItsPlanesInRowsOfWholeCacheLines) {
    const struct {
        std::size_t width, height;
        OSType format;
        std::size_t lumaRow, chromaRow, chromaWidth, chromaHeight, row;
    } cases[] = {
        {1920, 1080, eightBit, 1920, 1920, 960, 540, 2880},
        {1080, 1920, eightBit, 1088, 1088, 540, 960, 1632},
        {1, 1, eightBit, 64, 64, 1, 1, 128},
        {65, 3, eightBit, 128, 128, 33, 2, 214},
        {33, 3, tenBit, 128, 128, 17, 2, 214},
    };
    for (const auto& c : cases) {
        const CVPixelBufferRef buffer = make(c.width, c.height, c.format);
        EXPECT_EQ(CVPixelBufferGetPlaneCount(buffer), 2u);
        EXPECT_EQ(CVPixelBufferGetBytesPerRowOfPlane(buffer, 0), c.lumaRow);
        EXPECT_EQ(CVPixelBufferGetWidthOfPlane(buffer, 1), c.chromaWidth);
        EXPECT_EQ(CVPixelBufferGetHeightOfPlane(buffer, 1), c.chromaHeight);
        EXPECT_EQ(CVPixelBufferGetBytesPerRowOfPlane(buffer, 1), c.chromaRow);
        EXPECT_EQ(CVPixelBufferGetBytesPerRow(buffer), c.row);
    }
}

TEST(CVPixelBuffer, IsRefusedInFormatsAndSizesThatCantBe) {
    constexpr std::size_t huge = std::size_t{1} << 31;
    const struct {
        std::size_t width, height;
        OSType format;
        CVReturn status;
    } cases[] = {{16, 16, 0x34323066, -6680},
                 {0, 16, eightBit, -6681},
                 {huge, 16, eightBit, -6681},
                 {huge - 1, huge - 1, kCVPixelFormatType_32BGRA, -6681}};
    for (const auto& c : cases) {
        CVPixelBufferRef buffer;
        EXPECT_EQ(CVPixelBufferCreate(c.width, c.height, c.format, {}, &buffer), c.status);
        EXPECT_EQ(buffer, nullptr);
    }
    EXPECT_EQ(CVPixelBufferCreate(16, 16, eightBit, {}, nullptr), kCVReturnInvalidArgument);
}

TEST(CVPixelBuffer, CountsItsLocks) {
    const CVPixelBufferRef buffer = make(16, 16, eightBit);
    EXPECT_EQ(CVPixelBufferGetBaseAddressOfPlane(buffer, 0), nullptr);
    EXPECT_EQ(CVPixelBufferUnlockBaseAddress(buffer, 0), -6661);
    for (int locks = 1; locks <= 2; ++locks)
        CVPixelBufferLockBaseAddress(buffer, kCVPixelBufferLock_ReadOnly);
    EXPECT_EQ(CVPixelBufferUnlockBaseAddress(buffer, kCVPixelBufferLock_ReadOnly), 0);
    EXPECT_NE(CVPixelBufferGetBaseAddress(buffer), nullptr);
    EXPECT_EQ(CVPixelBufferUnlockBaseAddress(buffer, kCVPixelBufferLock_ReadOnly), 0);
    EXPECT_EQ(CVPixelBufferGetBaseAddress(buffer), nullptr);
    EXPECT_EQ(CVPixelBufferUnlockBaseAddress(buffer, 0), -6661);
}
