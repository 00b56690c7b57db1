#pragma once

#include "Tests/Support/Libav.h"
#include "Tests/Support/SignalColour.h"

#include <cstddef>

namespace anadrome::testing_support {

struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// Draws shapes straight into the planes of a planar YUV picture, whatever its depth and chroma subsampling.
class Canvas {
public:
    explicit Canvas(AVFrame& frame);

    int width() const { return frame_.width; }
    int height() const { return frame_.height; }
    int depth() const { return description_.comp[0].depth; }
    int planeCount() const { return description_.nb_components; }
    int planeWidth(int plane) const { return AV_CEIL_RSHIFT(frame_.width, shiftX(plane)); }
    int planeHeight(int plane) const { return AV_CEIL_RSHIFT(frame_.height, shiftY(plane)); }
    /// How many bytes so many samples of a row take up.
    std::size_t bytesOf(int samples) const {
        return static_cast<std::size_t>(samples) * static_cast<std::size_t>(sampleBytes());
    }
    int sampleBytes() const { return depth() > 8 ? 2 : 1; }
    std::uint8_t* row(int plane, int y) const {
        return frame_.data[plane] + std::ptrdiff_t{y} * frame_.linesize[plane];
    }
    std::uint8_t* sample(int plane, int x, int y) const {
        return row(plane, y) + std::ptrdiff_t{x} * sampleBytes();
    }

    void fill(const PixelRect& rect, const CodeValues& colour);

    /// Fills the rectangle from a picture of the same format whose (x, y) lies on this one's (0, 0).
    void copyFrom(const Canvas& source, int x, int y, const PixelRect& rect);

private:
    int shiftX(int plane) const { return plane == 1 || plane == 2 ? description_.log2_chroma_w : 0; }
    int shiftY(int plane) const { return plane == 1 || plane == 2 ? description_.log2_chroma_h : 0; }
    void fillRow(int plane, int y, int begin, int end, std::uint16_t value);
    /// Calls row(plane, y, begin, end) for each piece of a plane's row that the rectangle covers.
    template <class Row>
    void forEachRowOf(const PixelRect& rect, Row row) const;

    AVFrame& frame_;
    const AVPixFmtDescriptor& description_;
};

} // namespace anadrome::testing_support
