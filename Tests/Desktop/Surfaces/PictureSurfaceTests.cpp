#include "Desktop/Surfaces/PictureSurface.h"
#include "Desktop/Surfaces/QtVersions.h"

#include "Tests/Support/Orientation.h"

#include <QVideoFrame>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace anadrome {

namespace {

using testing_support::Orientation;
using testing_support::RelativePoint;

/// Which byte of which row, so that no two neighbours are alike.
std::uint8_t patternAt(std::size_t plane, std::size_t row, std::size_t byte) {
    return static_cast<std::uint8_t>(31 * plane + 7 * row + byte);
}

std::size_t bytesOfRow(const CVPixelBufferRef& pixels, std::size_t plane) {
    const std::size_t sampleBytes =
        CVPixelBufferGetPixelFormatType(pixels) == kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange ? 2 : 1;
    return CVPixelBufferGetWidthOfPlane(pixels, plane) * sampleBytes * (plane + 1);
}

CVPixelBufferRef patternedPixels(std::size_t width, std::size_t height, OSType format) {
    CVPixelBufferRef pixels;
    CVPixelBufferCreate(width, height, format, {}, &pixels);
    CVPixelBufferLockBaseAddress(pixels, 0);
    for (std::size_t plane = 0; plane < 2; ++plane) {
        auto* base = static_cast<std::uint8_t*>(CVPixelBufferGetBaseAddressOfPlane(pixels, plane));
        for (std::size_t row = 0; row < CVPixelBufferGetHeightOfPlane(pixels, plane); ++row)
            for (std::size_t byte = 0; byte < bytesOfRow(pixels, plane); ++byte)
                base[row * CVPixelBufferGetBytesPerRowOfPlane(pixels, plane) + byte] =
                    patternAt(plane, row, byte);
    }
    CVPixelBufferUnlockBaseAddress(pixels, 0);
    return pixels;
}

CVPixelBufferRef taggedPixels(const Dictionary& tags) {
    CVPixelBufferRef pixels = patternedPixels(64, 36, kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange);
    CVBufferSetAttachments(pixels, tags, kCVAttachmentMode_ShouldPropagate);
    return pixels;
}

ShownPicture upright(const CVPixelBufferRef& pixels) {
    return {pixels, CMTimeMake(1, 30), {1280, 720}, CGAffineTransformIdentity};
}

QVideoFrame shown(const ShownPicture& picture) {
    QVideoSink sink;
    PictureSurface(&sink).show(picture);
    return sink.videoFrame();
}

/// Where a VideoOutput shows a point of the frame: turned clockwise, then mirrored left to right.
RelativePoint shownByVideoOutput(const QVideoFrame& frame, RelativePoint point) {
    for (int angle = 0; angle < rotationOf(frame); angle += 90)
        point = {1 - point.y, point.x};
    if (frame.mirrored())
        point.x = 1 - point.x;
    return point;
}

} // namespace

TEST(PictureSurface, ShowsThePixelsInTheFormatOfTheBuffer) {
    struct Case {
        std::size_t width, height;
        OSType format;
        QVideoFrameFormat::PixelFormat expected;
    };
    constexpr OSType eight = kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange;
    constexpr OSType ten = kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange;
    for (const Case& c : {Case{64, 36, eight, QVideoFrameFormat::Format_NV12},
                          Case{64, 36, ten, QVideoFrameFormat::Format_P016},
                          Case{70, 38, eight, QVideoFrameFormat::Format_NV12},
                          Case{70, 38, ten, QVideoFrameFormat::Format_P016},
                          Case{2, 2, eight, QVideoFrameFormat::Format_NV12}}) {
        SCOPED_TRACE(std::to_string(c.width) + " wide");
        const CVPixelBufferRef pixels = patternedPixels(c.width, c.height, c.format);
        QVideoFrame frame = shown(upright(pixels));
        ASSERT_EQ(frame.pixelFormat(), c.expected);
        EXPECT_EQ(frame.size(), QSize(static_cast<int>(c.width), static_cast<int>(c.height)));
        ASSERT_TRUE(frame.map(QVideoFrame::ReadOnly));
        for (std::size_t plane = 0; plane < 2; ++plane)
            for (std::size_t row = 0; row < CVPixelBufferGetHeightOfPlane(pixels, plane); ++row)
                for (std::size_t byte = 0; byte < bytesOfRow(pixels, plane); ++byte) {
                    const int index = static_cast<int>(plane);
                    const std::size_t place =
                        row * static_cast<std::size_t>(frame.bytesPerLine(index)) + byte;
                    ASSERT_EQ(frame.bits(index)[place], patternAt(plane, row, byte))
                        << plane << ' ' << row << ' ' << byte;
                }
        frame.unmap();
    }
}

TEST(PictureSurface, TellsTheColourOfThePicture) {
    using Format = QVideoFrameFormat;
    struct Case {
        const char* matrix;
        const char* transfer;
        Format::ColorSpace space;
        Format::ColorTransfer curve;
        Format::PixelFormat pixels;
    };
    const Case cases[] = {
        {kCVImageBufferYCbCrMatrix_ITU_R_601_4, kCVImageBufferTransferFunction_ITU_R_709_2,
         Format::ColorSpace_BT601, Format::ColorTransfer_BT709, Format::Format_P016},
        {kCVImageBufferYCbCrMatrix_ITU_R_709_2, kCVImageBufferTransferFunction_ITU_R_709_2,
         Format::ColorSpace_BT709, Format::ColorTransfer_BT709, Format::Format_P016},
        {kCVImageBufferYCbCrMatrix_ITU_R_2020, kCVImageBufferTransferFunction_ITU_R_2020,
         Format::ColorSpace_BT2020, Format::ColorTransfer_BT709, Format::Format_P016},
        {kCVImageBufferYCbCrMatrix_ITU_R_2020, kCVImageBufferTransferFunction_ITU_R_2100_HLG,
         Format::ColorSpace_BT2020, Format::ColorTransfer_STD_B67, Format::Format_P010},
        {kCVImageBufferYCbCrMatrix_ITU_R_2020, kCVImageBufferTransferFunction_SMPTE_ST_2084_PQ,
         Format::ColorSpace_BT2020, Format::ColorTransfer_ST2084, Format::Format_P010},
    };
    for (const Case& c : cases) {
        const QVideoFrameFormat format =
            shown(upright(taggedPixels({{kCVImageBufferYCbCrMatrixKey, c.matrix},
                                        {kCVImageBufferTransferFunctionKey, c.transfer}})))
                .surfaceFormat();
        EXPECT_EQ(format.colorSpace(), c.space) << c.matrix;
        EXPECT_EQ(format.colorTransfer(), c.curve) << c.transfer;
        EXPECT_EQ(format.pixelFormat(), c.pixels) << c.transfer;
        EXPECT_EQ(format.colorRange(), QVideoFrameFormat::ColorRange_Video);
    }
}

TEST(PictureSurface, GuessesTheColourOfAnUntaggedPictureByTheSizeOfTheClip) {
    ShownPicture picture = upright(taggedPixels({}));
    EXPECT_EQ(shown(picture).surfaceFormat().colorSpace(), QVideoFrameFormat::ColorSpace_BT709);
    picture.naturalSize = {720, 576};
    EXPECT_EQ(shown(picture).surfaceFormat().colorSpace(), QVideoFrameFormat::ColorSpace_BT601);
}

TEST(PictureSurface, TurnsAndMirrorsThePicture) {
    const CVPixelBufferRef pixels = patternedPixels(64, 36, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    for (int i = 0; i < testing_support::kOrientationCount; ++i) {
        SCOPED_TRACE(i);
        const auto orientation = static_cast<Orientation>(i);
        const testing_support::DisplayMatrix m = testing_support::displayMatrix(orientation, 1280, 720);
        ShownPicture picture = upright(pixels);
        picture.transform = {m[0] / 65536.0, m[1] / 65536.0, m[3] / 65536.0, m[4] / 65536.0, 0, 0};
        const QVideoFrame frame = shown(picture);
        for (const RelativePoint corner : {RelativePoint{0, 0}, RelativePoint{1, 0}, RelativePoint{0, 1}}) {
            const RelativePoint expected = testing_support::shownAt(orientation, corner);
            const RelativePoint actual = shownByVideoOutput(frame, corner);
            EXPECT_EQ(actual.x, expected.x) << corner.x << ' ' << corner.y;
            EXPECT_EQ(actual.y, expected.y) << corner.x << ' ' << corner.y;
        }
    }
}

TEST(PictureSurface, LetsTheBufferGoAndKeepsThePictureUntilTheNext) {
    QVideoSink sink;
    PictureSurface surface(&sink);
    CVPixelBufferRef pixels = patternedPixels(64, 36, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    const std::weak_ptr<CVPixelBuffer> watched = pixels;
    surface.show(upright(std::exchange(pixels, nullptr)));
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(sink.videoFrame().startTime(), 33333);

    ShownPicture unknown = upright(nullptr);
    CVPixelBufferCreate(64, 36, kCVPixelFormatType_32BGRA, {}, &unknown.pixels);
    surface.show(unknown);
    EXPECT_EQ(sink.videoFrame().pixelFormat(), QVideoFrameFormat::Format_NV12);
}

TEST(PictureSurface, DoesNothingWhenTheSinkIsGone) {
    auto sink = std::make_unique<QVideoSink>();
    PictureSurface surface(sink.get());
    sink.reset();
    surface.show(upright(patternedPixels(64, 36, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange)));
}

} // namespace anadrome
