#include "Tests/Support/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace anadrome::testing_support {

Canvas::Canvas(AVFrame& frame)
    : frame_(frame), description_(*av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format))) {}

void Canvas::fillRow(int plane, int y, int begin, int end, std::uint16_t value) {
    if (sampleBytes() == 1)
        std::memset(sample(plane, begin, y), value, static_cast<std::size_t>(end - begin));
    else
        std::fill_n(reinterpret_cast<std::uint16_t*>(sample(plane, begin, y)), end - begin, value);
}

void Canvas::fill(const PixelRect& rect, const CodeValues& colour) {
    for (int plane = 0; plane < planeCount(); ++plane) {
        const int left = std::max(0, rect.left) >> shiftX(plane);
        const int top = std::max(0, rect.top) >> shiftY(plane);
        const int right = std::min(planeWidth(plane), AV_CEIL_RSHIFT(rect.right, shiftX(plane)));
        const int bottom = std::min(planeHeight(plane), AV_CEIL_RSHIFT(rect.bottom, shiftY(plane)));
        for (int y = top; y < bottom && left < right; ++y)
            fillRow(plane, y, left, right, colour[static_cast<std::size_t>(plane)]);
    }
}

/// Calls row(plane, y, begin, end) for each piece of a plane's row that the disc covers.
template <class Row>
void Canvas::forEachRowOf(const Disc& disc, Row row) const {
    for (int plane = 0; plane < planeCount(); ++plane) {
        const double scaleX = 1 << shiftX(plane);
        const double scaleY = 1 << shiftY(plane);
        const int top = std::max(0, static_cast<int>((disc.y - disc.radius) / scaleY));
        const int bottom =
            std::min(planeHeight(plane), static_cast<int>((disc.y + disc.radius) / scaleY) + 1);
        for (int y = top; y < bottom; ++y) {
            const double height = (y + 0.5) * scaleY - disc.y;
            const double reach = std::sqrt(std::max(0.0, disc.radius * disc.radius - height * height));
            const int begin = std::max(0, static_cast<int>(std::lround((disc.x - reach) / scaleX)));
            const int end =
                std::min(planeWidth(plane), static_cast<int>(std::lround((disc.x + reach) / scaleX)));
            if (begin < end)
                row(plane, y, begin, end);
        }
    }
}

void Canvas::fillDisc(const Disc& disc, const CodeValues& colour) {
    forEachRowOf(disc, [&](int plane, int y, int begin, int end) {
        fillRow(plane, y, begin, end, colour[static_cast<std::size_t>(plane)]);
    });
}

void Canvas::copyFrom(const Canvas& source, int x, int y) {
    for (int plane = 0; plane < planeCount(); ++plane) {
        const auto bytes = bytesOf(planeWidth(plane));
        for (int line = 0; line < planeHeight(plane); ++line)
            std::memcpy(row(plane, line),
                        source.sample(plane, x >> shiftX(plane), line + (y >> shiftY(plane))), bytes);
    }
}

void Canvas::copyDiscFrom(const Canvas& source, int x, int y, const Disc& disc) {
    forEachRowOf(disc, [&](int plane, int line, int begin, int end) {
        std::memcpy(sample(plane, begin, line),
                    source.sample(plane, begin + (x >> shiftX(plane)), line + (y >> shiftY(plane))),
                    bytesOf(end - begin));
    });
}

} // namespace anadrome::testing_support
