#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"

#include <cstring>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

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
        {854, 480, tenBit, 1728, 1728, 427, 240, 2592},
        {1, 1, eightBit, 64, 64, 1, 1, 128},
        {65, 3, eightBit, 128, 128, 33, 2, 214},
        {33, 3, tenBit, 128, 128, 17, 2, 214},
    };
    for (const auto& c : cases) {
        const CVPixelBufferRef buffer = make(c.width, c.height, c.format);
        EXPECT_EQ(CVPixelBufferGetPlaneCount(buffer), 2u);
        EXPECT_EQ(CVPixelBufferGetWidthOfPlane(buffer, 0), c.width);
        EXPECT_EQ(CVPixelBufferGetHeightOfPlane(buffer, 0), c.height);
        EXPECT_EQ(CVPixelBufferGetBytesPerRowOfPlane(buffer, 0), c.lumaRow);
        EXPECT_EQ(CVPixelBufferGetWidthOfPlane(buffer, 1), c.chromaWidth);
        EXPECT_EQ(CVPixelBufferGetHeightOfPlane(buffer, 1), c.chromaHeight);
        EXPECT_EQ(CVPixelBufferGetBytesPerRowOfPlane(buffer, 1), c.chromaRow);
        EXPECT_EQ(CVPixelBufferGetBytesPerRow(buffer), c.row);
        EXPECT_EQ(CVPixelBufferGetBytesPerRowOfPlane(buffer, 2), 0u);
    }
}

TEST(CVPixelBuffer, HasNoPlanesWhereTheFormatIsNotPlanar) {
    const CVPixelBufferRef buffer = make(17, 5, kCVPixelFormatType_32BGRA);
    CVPixelBufferLockBaseAddress(buffer, 0);
    EXPECT_EQ(CVPixelBufferGetPlaneCount(buffer), 0u);
    EXPECT_EQ(CVPixelBufferGetBytesPerRow(buffer), 128u);
    EXPECT_EQ(CVPixelBufferGetBytesPerRowOfPlane(buffer, 0), 0u);
    EXPECT_EQ(CVPixelBufferGetBaseAddressOfPlane(buffer, 0), nullptr);
    std::memset(CVPixelBufferGetBaseAddress(buffer), 9, 128 * 5);
}

TEST(CVPixelBuffer, IsRefusedInFormatsAndSizesThatCantBe) {
    constexpr std::size_t huge = std::size_t{1} << 31;
    const struct {
        std::size_t width, height;
        OSType format;
        CVReturn status;
    } cases[] = {
        {16, 16, 0x34323066, -6680},
        {0, 16, eightBit, -6681},
        {16, 0, kCVPixelFormatType_32BGRA, -6681},
        {huge, 16, eightBit, -6681},
        {16, huge, eightBit, -6681},
        {SIZE_MAX, SIZE_MAX, tenBit, -6681},
        {huge - 1, huge - 1, kCVPixelFormatType_32BGRA, -6681},
    };
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
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                CVPixelBufferLockBaseAddress(buffer, kCVPixelBufferLock_ReadOnly);
                EXPECT_NE(CVPixelBufferGetBaseAddress(buffer), nullptr);
                EXPECT_EQ(CVPixelBufferUnlockBaseAddress(buffer, kCVPixelBufferLock_ReadOnly), 0);
            }
        });
    }
    threads.clear();
    EXPECT_EQ(CVPixelBufferGetBaseAddress(buffer), nullptr);
    EXPECT_EQ(CVPixelBufferUnlockBaseAddress(buffer, 0), -6661);
}

TEST(CVPixelBuffer, KeepsOneModeForEachAttachment) {
    const Dictionary attributes{{kCVImageBufferYCbCrMatrixKey, kCVImageBufferYCbCrMatrix_ITU_R_2020}};
    CVPixelBufferRef buffer;
    ASSERT_EQ(CVPixelBufferCreate(16, 16, eightBit, attributes, &buffer), 0);
    EXPECT_TRUE(CVBufferCopyAttachments(buffer, kCVAttachmentMode_ShouldPropagate).empty());
    CVBufferSetAttachments(buffer, {{"a", 1}, {"b", 2}}, kCVAttachmentMode_ShouldPropagate);
    CVBufferSetAttachments(buffer, {{"b", 3}}, kCVAttachmentMode_ShouldNotPropagate);
    EXPECT_EQ(CVBufferCopyAttachments(buffer, kCVAttachmentMode_ShouldPropagate), (Dictionary{{"a", 1}}));
    EXPECT_EQ(CVBufferCopyAttachments(buffer, kCVAttachmentMode_ShouldNotPropagate), (Dictionary{{"b", 3}}));
}

TEST(CGAffineTransform, TurnsPicturesUpright) {
    const CGAffineTransform quarterTurn{0, 1, -1, 0, 1080, 0};
    EXPECT_EQ(CGPointApplyAffineTransform({0, 1080}, quarterTurn), (CGPoint{0, 0}));
    EXPECT_EQ(CGSizeApplyAffineTransform({1920, 1080}, quarterTurn), (CGSize{-1080, 1920}));
}
