#include "Tests/Support/PictureReading.h"
#include "Tests/Support/PictureLayout.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

namespace {

bool isFullRange(const AVFrame& frame) {
    switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
        return true;
    default:
        return frame.color_range == AVCOL_RANGE_JPEG;
    }
}

double meanOf(const LumaView& picture, const PixelRect& rect) {
    std::int64_t sum = 0;
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            sum += picture.data[y * picture.stride + x];
    return static_cast<double>(sum) / ((rect.right - rect.left) * (rect.bottom - rect.top));
}

/// The mean over the middle half of a place, at least one pixel.
double levelAt(const LumaView& picture, const RelativeRect& place) {
    const double insetX = (place.right - place.left) / 4;
    const double insetY = (place.bottom - place.top) / 4;
    PixelRect rect =
        toPixels({place.left + insetX, place.top + insetY, place.right - insetX, place.bottom - insetY},
                 picture.width, picture.height);
    rect.left = std::min(rect.left, picture.width - 1);
    rect.top = std::min(rect.top, picture.height - 1);
    rect.right = std::max(rect.right, rect.left + 1);
    rect.bottom = std::max(rect.bottom, rect.top + 1);
    return meanOf(picture, rect);
}

/// In every colour matrix the patches grow brighter in this order: blue, red, green, yellow.
bool cornersStandAs(Orientation orientation, const LumaView& picture) {
    constexpr std::array<std::size_t, 4> kDarkestFirst = {2, 0, 1, 3};
    constexpr double kLeastStep = 4;
    double previous = -kLeastStep;
    for (const std::size_t corner : kDarkestFirst) {
        const double level = levelAt(picture, shownAt(orientation, kCorners[corner]));
        if (level < previous + kLeastStep)
            return false;
        previous = level;
    }
    return true;
}

CornerColour classified(double red, double green, double blue) {
    const double half = std::max({red, green, blue}) / 2;
    if (half < 20)
        return CornerColour::Other;
    const int lit = (red > half ? 1 : 0) + (green > half ? 2 : 0) + (blue > half ? 4 : 0);
    switch (lit) {
    case 1:
        return CornerColour::Red;
    case 2:
        return CornerColour::Green;
    case 3:
        return CornerColour::Yellow;
    case 4:
        return CornerColour::Blue;
    default:
        return CornerColour::Other;
    }
}

/// A small RGB copy of the frame.
FramePtr thumbnail(const AVFrame& frame, int side) {
    FramePtr small = makePicture(side, side, AV_PIX_FMT_RGB24);
    const ScalerPtr scaler(
        checked(sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), side,
                               side, AV_PIX_FMT_RGB24, SWS_AREA, nullptr, nullptr, nullptr),
                "this pixel format cannot be converted"));
    const AVColorSpace matrix =
        frame.colorspace == AVCOL_SPC_UNSPECIFIED ? AVCOL_SPC_BT709 : frame.colorspace;
    sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(matrix), isFullRange(frame),
                             sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, small->data, small->linesize);
    return small;
}

} // namespace

FrameLuma::FrameLuma(const AVFrame& frame)
    : view_{frame.data[0], frame.linesize[0], frame.width, frame.height}, fullRange_(isFullRange(frame)) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const AVComponentDescriptor& luma = description->comp[0];
    if (description->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL))
        convertRgb(frame);
    else if (luma.depth != 8 || luma.step != 1)
        convertDepth(frame, luma);
}

void FrameLuma::convertRgb(const AVFrame& frame) {
    converted_.resize(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
    const ScalerPtr scaler(checked(
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), frame.width,
                       frame.height, AV_PIX_FMT_GRAY8, SWS_POINT, nullptr, nullptr, nullptr),
        "this pixel format cannot be converted"));
    std::uint8_t* const planes[] = {converted_.data()};
    const int strides[] = {frame.width};
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
    view_ = {converted_.data(), frame.width, frame.width, frame.height};
    fullRange_ = true;
}

void FrameLuma::convertDepth(const AVFrame& frame, const AVComponentDescriptor& luma) {
    converted_.reserve(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
    const int excess = luma.depth - 8;
    const int half = excess > 0 ? 1 << (excess - 1) : 0;
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* sample =
            frame.data[luma.plane] + std::ptrdiff_t{y} * frame.linesize[luma.plane] + luma.offset;
        for (int x = 0; x < frame.width; ++x, sample += luma.step) {
            const int word = excess > 0 ? (sample[0] | sample[1] << 8) >> luma.shift : sample[0];
            converted_.push_back(static_cast<std::uint8_t>(std::min(255, (word + half) >> excess)));
        }
    }
    view_ = {converted_.data(), frame.width, frame.width, frame.height};
}

double FrameLuma::mean() const {
    const double mean = meanOf(view_, {0, 0, view_.width, view_.height});
    return fullRange_ ? 16 + mean * 219 / 255 : mean;
}

std::optional<Orientation> orientationOf(const LumaView& picture) {
    for (int index = 0; index < kOrientationCount; ++index)
        if (cornersStandAs(static_cast<Orientation>(index), picture))
            return static_cast<Orientation>(index);
    return std::nullopt;
}

std::optional<int> readFrameNumber(const LumaView& picture) {
    const auto orientation = orientationOf(picture);
    if (!orientation)
        return std::nullopt;
    std::array<double, kCodeCells> levels{};
    for (int cell = 0; cell < kCodeCells; ++cell)
        levels[static_cast<std::size_t>(cell)] = levelAt(picture, shownAt(*orientation, codeCell(cell)));

    const auto [black, white] = std::minmax_element(levels.begin(), levels.end());
    const double contrast = *white - *black;
    const double middle = (*white + *black) / 2;
    constexpr double kLeastContrast = 50;
    if (contrast < kLeastContrast)
        return std::nullopt;
    FrameCode code;
    for (std::size_t cell = 0; cell < levels.size(); ++cell) {
        if (std::abs(levels[cell] - middle) < contrast * 0.15)
            return std::nullopt;
        code[cell] = levels[cell] > middle;
    }
    return numberOf(code);
}

CornerColours cornerColours(const AVFrame& frame) {
    constexpr int kSide = 64;
    const FramePtr small = thumbnail(frame, kSide);
    CornerColours colours{};
    for (std::size_t corner = 0; corner < kCorners.size(); ++corner) {
        const PixelRect patch = toPixels(kCorners[corner], kSide, kSide);
        const std::ptrdiff_t column = (patch.left + patch.right) / 2;
        const std::ptrdiff_t row = (patch.top + patch.bottom) / 2;
        const std::uint8_t* middle = small->data[0] + row * small->linesize[0] + column * 3;
        colours[corner] = classified(middle[0], middle[1], middle[2]);
    }
    return colours;
}

} // namespace anadrome::testing_support
