#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"

#include <optional>

namespace anadrome::render {

/// Whole pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// Where a picture comes to lie and which way round, with all sides even so that 4:2:0 has whole samples.
struct Placement {
    /// Rows become columns; after that the mirrorings.
    bool isTransposed = false;
    bool mirrorsX = false;
    bool mirrorsY = false;
    /// May reach beyond the output.
    int left = 0;
    int top = 0;
    PixelSize size;

    /// What the picture has to be scaled to before it is turned.
    PixelSize sizeBeforeTurning() const { return isTransposed ? PixelSize{size.height, size.width} : size; }
    bool isTurned() const { return isTransposed || mirrorsX || mirrorsY; }
    bool covers(const PixelSize& output) const { return left == 0 && top == 0 && size == output; }
};

/// Where a picture of the natural size lies that is put by the transform on a canvas of the given size, which
/// is then scaled to the output. Empty for transforms that aren't quarter turns, mirrorings, scalings and
/// moves, and for sizes beyond reason.
std::optional<Placement> placementOf(CGSize naturalSize, const CGAffineTransform& transform, CGSize canvas,
                                     const PixelSize& output);

} // namespace anadrome::render
