#include "Tests/Support/Canvas.h"

#include <algorithm>
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

template <class Row>
void Canvas::forEachRowOf(const PixelRect& rect, Row row) const {
    for (int plane = 0; plane < planeCount(); ++plane) {
        const int left = std::max(0, rect.left) >> shiftX(plane);
        const int top = std::max(0, rect.top) >> shiftY(plane);
        const int right = std::min(planeWidth(plane), AV_CEIL_RSHIFT(rect.right, shiftX(plane)));
        const int bottom = std::min(planeHeight(plane), AV_CEIL_RSHIFT(rect.bottom, shiftY(plane)));
        for (int y = top; y < bottom && left < right; ++y)
            row(plane, y, left, right);
    }
}

void Canvas::fill(const PixelRect& rect, const CodeValues& colour) {
    forEachRowOf(rect, [&](int plane, int y, int begin, int end) {
        fillRow(plane, y, begin, end, colour[static_cast<std::size_t>(plane)]);
    });
}

void Canvas::copyFrom(const Canvas& source, int x, int y, const PixelRect& rect) {
    forEachRowOf(rect, [&](int plane, int line, int begin, int end) {
        std::memcpy(sample(plane, begin, line),
                    source.sample(plane, begin + (x >> shiftX(plane)), line + (y >> shiftY(plane))),
                    bytesOf(end - begin));
    });
}

} // namespace anadrome::testing_support
