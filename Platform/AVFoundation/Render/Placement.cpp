#include "Platform/AVFoundation/Render/Placement.h"

#include <algorithm>
#include <cmath>

namespace anadrome::render {

namespace {

constexpr double largestSide = 32768;

/// Where one side of the picture lies in the output.
struct Stretch {
    double start;
    double end;
};

Stretch stretch(double a, double b, double scale) {
    return {std::min(a, b) * scale, std::max(a, b) * scale};
}

/// The nearest even pixels. What falls short of the whole output by a rounding error is the whole output.
void settle(const Stretch& stretch, int whole, int& start, int& size) {
    if (std::abs(stretch.start) < 1.5 && std::abs(stretch.end - whole) < 1.5) {
        start = 0;
        size = whole;
        return;
    }
    start = 2 * static_cast<int>(std::lround(stretch.start / 2));
    size = std::max(2, 2 * static_cast<int>(std::lround((stretch.end - stretch.start) / 2)));
}

bool isNothingBeside(double term, double other) {
    return std::abs(term) < 1e-3 * std::abs(other);
}

} // namespace

std::optional<Placement> placementOf(CGSize naturalSize, const CGAffineTransform& transform, CGSize canvas,
                                     const PixelSize& output) {
    Placement placement;
    const CGAffineTransform& t = transform;
    placement.isTransposed = isNothingBeside(t.a, t.b) && isNothingBeside(t.d, t.c);
    if (!placement.isTransposed && !(isNothingBeside(t.b, t.a) && isNothingBeside(t.c, t.d)))
        return std::nullopt;
    placement.mirrorsX = (placement.isTransposed ? t.c : t.a) < 0;
    placement.mirrorsY = (placement.isTransposed ? t.b : t.d) < 0;

    const CGPoint corner = CGPointApplyAffineTransform({0, 0}, t);
    const CGPoint opposite = CGPointApplyAffineTransform({naturalSize.width, naturalSize.height}, t);
    const Stretch x = stretch(corner.x, opposite.x, output.width / canvas.width);
    const Stretch y = stretch(corner.y, opposite.y, output.height / canvas.height);
    for (const double edge : {x.start, x.end, y.start, y.end})
        if (!(std::abs(edge) < largestSide))
            return std::nullopt;
    settle(x, output.width, placement.left, placement.size.width);
    settle(y, output.height, placement.top, placement.size.height);
    return placement;
}

} // namespace anadrome::render
