#pragma once

#include <array>
#include <cstdint>

namespace anadrome::testing_support {

/// How a coded picture is turned before it is shown. Rotations are clockwise.
enum class Orientation {
    Upright,
    Rotate90,
    Rotate180,
    Rotate270,
    MirrorLeftRight,
    MirrorUpDown,
    Transpose,  ///< mirrored about the diagonal from top left to bottom right
    Transverse, ///< mirrored about the other diagonal
};

inline constexpr int kOrientationCount = 8;

struct RelativePoint {
    double x = 0;
    double y = 0;
};

/// Where a point of the coded picture is shown; both pictures reach from 0 to 1.
RelativePoint shownAt(Orientation orientation, RelativePoint coded);

using DisplayMatrix = std::array<std::int32_t, 9>;

/// The track matrix that shows a picture of this size turned and moved back to the origin.
DisplayMatrix displayMatrix(Orientation orientation, int width, int height);

} // namespace anadrome::testing_support
