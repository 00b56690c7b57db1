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

/// The samples of a component's row, whatever the format.
std::vector<std::uint16_t> rowOf(const AVFrame& frame, int component, int y) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const int width = component ? AV_CEIL_RSHIFT(frame.width, format->log2_chroma_w) : frame.width;
    std::vector<std::uint16_t> row(static_cast<std::size_t>(width));
    av_read_image_line2(row.data(), const_cast<const std::uint8_t**>(frame.data), frame.linesize, format, 0,
                        y, component, width, 0, sizeof row[0]);
    return row;
}

/// A colour difference at a pixel, from -0.5 to 0.5.
double differenceAt(const AVFrame& frame, int component, int x, int y) {
    const AVPixFmtDescriptor& format = *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const auto row = rowOf(frame, component, y >> format.log2_chroma_h);
    return std::ldexp(row[static_cast<std::size_t>(x >> format.log2_chroma_w)],
                      -format.comp[component].depth) -
           0.5;
}

CornerColour classified(double blueDifference, double redDifference) {
    constexpr double kClear = 0.2;
    if (blueDifference > kClear)
        return CornerColour::Blue;
    if (redDifference > kClear)
        return CornerColour::Red;
    if (redDifference < -kClear)
        return CornerColour::Green;
    return blueDifference < -kClear ? CornerColour::Yellow : CornerColour::Other;
}

} // namespace

FrameLuma::FrameLuma(const AVFrame& frame)
    : view_{frame.data[0], frame.linesize[0], frame.width, frame.height}, fullRange_(isFullRange(frame)) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const AVComponentDescriptor& luma = description->comp[0];
    if (luma.depth > 8)
        convertDepth(frame, luma.depth);
}

void FrameLuma::convertDepth(const AVFrame& frame, int depth) {
    for (int y = 0; y < frame.height; ++y)
        for (const int sample : rowOf(frame, 0, y))
            converted_.push_back(
                static_cast<std::uint8_t>(std::min(255, (sample + (1 << (depth - 9))) >> (depth - 8))));
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
    CornerColours colours{};
    for (std::size_t corner = 0; corner < kCorners.size(); ++corner) {
        const PixelRect patch = toPixels(kCorners[corner], frame.width, frame.height);
        const int column = (patch.left + patch.right) / 2;
        const int row = (patch.top + patch.bottom) / 2;
        colours[corner] =
            classified(differenceAt(frame, 1, column, row), differenceAt(frame, 2, column, row));
    }
    return colours;
}

} // namespace anadrome::testing_support
