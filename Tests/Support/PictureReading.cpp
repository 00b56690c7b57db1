#include "Tests/Support/PictureReading.h"
#include "Tests/Support/PictureLayout.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

namespace {

/// The mean over the middle half of a place, at least one pixel.
double levelAt(const LumaPicture& picture, const RelativeRect& place) {
    const double insetX = (place.right - place.left) / 4;
    const double insetY = (place.bottom - place.top) / 4;
    PixelRect rect =
        toPixels({place.left + insetX, place.top + insetY, place.right - insetX, place.bottom - insetY},
                 picture.width, picture.height);
    rect.right = std::max(rect.right, rect.left + 1);
    rect.bottom = std::max(rect.bottom, rect.top + 1);
    double sum = 0;
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            sum += picture.at(x, y);
    return sum / ((rect.right - rect.left) * (rect.bottom - rect.top));
}

/// In every colour matrix the patches grow brighter in this order: blue, red, green, yellow.
bool cornersStandAs(Orientation orientation, const LumaPicture& picture) {
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

/// A colour difference at a pixel, from -0.5 to 0.5.
double differenceAt(const AVFrame& frame, int component, int x, int y) {
    const AVPixFmtDescriptor& format = *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    std::uint16_t value = 0;
    av_read_image_line2(&value, const_cast<const std::uint8_t**>(frame.data), frame.linesize, &format,
                        x >> format.log2_chroma_w, y >> format.log2_chroma_h, component, 1, 0, sizeof value);
    return std::ldexp(value, -format.comp[component].depth) - 0.5;
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

/// How the coloured corners say the picture has been turned.
std::optional<Orientation> orientationOf(const LumaPicture& picture) {
    for (int index = 0; index < kOrientationCount; ++index)
        if (cornersStandAs(static_cast<Orientation>(index), picture))
            return static_cast<Orientation>(index);
    return std::nullopt;
}

} // namespace

std::optional<int> readFrameNumber(const LumaPicture& picture) {
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
