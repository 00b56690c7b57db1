#include "Tests/Support/Orientation.h"

#include <cstddef>

namespace anadrome::testing_support {

namespace {

/// shown.x = a * x + c * y + tx, shown.y = b * x + d * y + ty, all in pictures that reach from 0 to 1.
struct Turn {
    int a, b, c, d, tx, ty;
};

constexpr std::array<Turn, kOrientationCount> kTurns = {{
    {1, 0, 0, 1, 0, 0},
    {0, 1, -1, 0, 1, 0},
    {-1, 0, 0, -1, 1, 1},
    {0, -1, 1, 0, 0, 1},
    {-1, 0, 0, 1, 1, 0},
    {1, 0, 0, -1, 0, 1},
    {0, 1, 1, 0, 0, 0},
    {0, -1, -1, 0, 1, 1},
}};

const Turn& turnOf(Orientation orientation) {
    return kTurns[static_cast<std::size_t>(orientation)];
}

} // namespace

RelativePoint shownAt(Orientation orientation, RelativePoint coded) {
    const Turn& turn = turnOf(orientation);
    return {turn.a * coded.x + turn.c * coded.y + turn.tx, turn.b * coded.x + turn.d * coded.y + turn.ty};
}

DisplayMatrix displayMatrix(Orientation orientation, int width, int height) {
    const Turn& turn = turnOf(orientation);
    const bool sideways = turn.a == 0;
    const int shownWidth = sideways ? height : width;
    const int shownHeight = sideways ? width : height;
    constexpr std::int32_t kOne = 1 << 16;
    return {turn.a * kOne,
            turn.b * kOne,
            0,
            turn.c * kOne,
            turn.d * kOne,
            0,
            turn.tx * shownWidth * kOne,
            turn.ty * shownHeight * kOne,
            1 << 30};
}

} // namespace anadrome::testing_support
