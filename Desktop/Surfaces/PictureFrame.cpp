#include "Desktop/Surfaces/PictureFrame.h"

#include "Desktop/Surfaces/QtVersions.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

namespace anadrome {

namespace {

/// What pictures without a matrix are taken to be made with goes by the stored size, as everywhere else. The
/// decoder scales down to an eighth at the least, so the size of these pixels wouldn't do.
QVideoFrameFormat::ColorSpace colorSpaceOf(const Dictionary& attachments, CGSize naturalSize) {
    const std::string* matrix = findString(attachments, kCVImageBufferYCbCrMatrixKey);
    if (!matrix)
        return naturalSize.height < 720 ? QVideoFrameFormat::ColorSpace_BT601
                                        : QVideoFrameFormat::ColorSpace_BT709;
    if (*matrix == kCVImageBufferYCbCrMatrix_ITU_R_601_4)
        return QVideoFrameFormat::ColorSpace_BT601;
    if (*matrix == kCVImageBufferYCbCrMatrix_ITU_R_2020)
        return QVideoFrameFormat::ColorSpace_BT2020;
    return QVideoFrameFormat::ColorSpace_BT709; // the nearest to SMPTE 240M as well
}

QVideoFrameFormat::ColorTransfer colorTransferOf(const Dictionary& attachments) {
    const std::string* transfer = findString(attachments, kCVImageBufferTransferFunctionKey);
    if (!transfer)
        return QVideoFrameFormat::ColorTransfer_BT709;
    if (*transfer == kCVImageBufferTransferFunction_SMPTE_ST_2084_PQ)
        return QVideoFrameFormat::ColorTransfer_ST2084;
    if (*transfer == kCVImageBufferTransferFunction_ITU_R_2100_HLG)
        return QVideoFrameFormat::ColorTransfer_STD_B67;
    if (*transfer == kCVImageBufferTransferFunction_Linear)
        return QVideoFrameFormat::ColorTransfer_Linear;
    if (*transfer == kCVImageBufferTransferFunction_sRGB)
        return QVideoFrameFormat::ColorTransfer_Gamma22;
    return QVideoFrameFormat::ColorTransfer_BT709;
}

/// A window keeps the first shader that it made for a pixel format, whatever the later pictures' transfer
/// function. So ten bits of standard and of high dynamic range go by two names of one layout.
QVideoFrameFormat::PixelFormat pixelFormatFor(OSType format, QVideoFrameFormat::ColorTransfer transfer) {
    switch (format) {
    case kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange:
        return QVideoFrameFormat::Format_NV12;
    case kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange:
        return transfer == QVideoFrameFormat::ColorTransfer_STD_B67 ||
                       transfer == QVideoFrameFormat::ColorTransfer_ST2084
                   ? QVideoFrameFormat::Format_P010
                   : QVideoFrameFormat::Format_P016;
    default:
        return QVideoFrameFormat::Format_Invalid;
    }
}

QVideoFrameFormat formatOf(const ShownPicture& picture) {
    const QSize size(static_cast<int>(CVPixelBufferGetWidth(picture.pixels)),
                     static_cast<int>(CVPixelBufferGetHeight(picture.pixels)));
    const Dictionary attachments = CVBufferCopyAttachments(picture.pixels, kCVAttachmentMode_ShouldPropagate);
    const QVideoFrameFormat::ColorTransfer transfer = colorTransferOf(attachments);
    QVideoFrameFormat format(size, pixelFormatFor(CVPixelBufferGetPixelFormatType(picture.pixels), transfer));
    format.setColorSpace(colorSpaceOf(attachments, picture.naturalSize));
    format.setColorTransfer(transfer);
    format.setColorRange(QVideoFrameFormat::ColorRange_Video);
    return format;
}

/// Rows of a frame may be longer or shorter than the buffer's; what lies beyond the picture stays out.
void copyPlane(const CVPixelBufferRef& pixels, std::size_t plane, QVideoFrame& frame) {
    const auto index = static_cast<int>(plane);
    const auto* from = static_cast<const uchar*>(CVPixelBufferGetBaseAddressOfPlane(pixels, plane));
    const std::size_t fromRow = CVPixelBufferGetBytesPerRowOfPlane(pixels, plane);
    uchar* to = frame.bits(index);
    const auto toRow = static_cast<std::size_t>(frame.bytesPerLine(index));
    // Qt rounds the rows of the chroma plane down.
    const std::size_t rows = std::min(CVPixelBufferGetHeightOfPlane(pixels, plane),
                                      static_cast<std::size_t>(frame.mappedBytes(index)) / toRow);
    if (fromRow == toRow) {
        std::memcpy(to, from, rows * toRow);
        return;
    }
    for (std::size_t row = 0; row < rows; ++row)
        std::memcpy(to + row * toRow, from + row * fromRow, std::min(fromRow, toRow));
}

bool copyPixels(const CVPixelBufferRef& pixels, QVideoFrame& frame) {
    if (!frame.map(QVideoFrame::WriteOnly))
        return false;
    CVPixelBufferLockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    for (std::size_t plane = 0; plane < CVPixelBufferGetPlaneCount(pixels); ++plane)
        copyPlane(pixels, plane, frame);
    CVPixelBufferUnlockBaseAddress(pixels, kCVPixelBufferLock_ReadOnly);
    frame.unmap();
    return true;
}

/// Turned clockwise first, and then mirrored left to right: a VideoOutput's order.
void turn(QVideoFrame& frame, const CGAffineTransform& t) {
    const bool mirrored = t.a * t.d < t.b * t.c;
    // Where the picture's right edge points before it is mirrored.
    const double right = mirrored ? -t.a : t.a;
    const double down = t.b;
    frame.setMirrored(mirrored);
    if (std::abs(right) >= std::abs(down))
        setRotation(frame, right > 0 ? 0 : 180);
    else
        setRotation(frame, down > 0 ? 90 : 270);
}

} // namespace

QVideoFrame frameWith(const ShownPicture& picture) {
    QVideoFrame frame(formatOf(picture));
    if (frame.pixelFormat() == QVideoFrameFormat::Format_Invalid || !copyPixels(picture.pixels, frame))
        return {};
    turn(frame, picture.transform);
    if (CMTIME_IS_NUMERIC(picture.time))
        frame.setStartTime(
            CMTimeConvertScale(picture.time, 1'000'000, CMTimeRoundingMethod::RoundHalfAwayFromZero).value);
    return frame;
}

} // namespace anadrome
