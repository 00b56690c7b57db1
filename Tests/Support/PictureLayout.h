#pragma once

#include "Tests/Support/Canvas.h"
#include "Tests/Support/Orientation.h"

#include <array>
#include <bitset>
#include <optional>

/// Where things stand in a numbered picture and what they say; drawing and reading share it. All places are
/// parts of the picture's width and height, so that they survive scaling.
namespace anadrome::testing_support {

struct RelativeRect {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

PixelRect toPixels(const RelativeRect& rect, int width, int height);
RelativeRect shownAt(Orientation orientation, const RelativeRect& coded);

/// The four corner patches, in the order red, green, blue, yellow: top
/// left, top right, bottom left, bottom right.
inline constexpr double kCornerSide = 1.0 / 8;
inline constexpr std::array<RelativeRect, 4> kCorners = {{
    {0, 0, kCornerSide, kCornerSide},
    {1 - kCornerSide, 0, 1, kCornerSide},
    {0, 1 - kCornerSide, kCornerSide, 1},
    {1 - kCornerSide, 1 - kCornerSide, 1, 1},
}};

inline constexpr RelativeRect kMotionBand = {0.15, 0.75, 0.85, 0.98};
inline constexpr RelativeRect kCodeBand = {0.06, 0.3, 0.94, 0.7};

/// The frame number as cells, row by row from the top left: 16 bits of
/// the number, highest first, then 8 check bits.
inline constexpr int kCodeColumns = 8;
inline constexpr int kCodeRows = 3;
inline constexpr int kCodeCells = kCodeColumns * kCodeRows;
inline constexpr int kFrameNumbers = 1 << 16;
using FrameCode = std::bitset<kCodeCells>; ///< the first cell is bit 0; white is true

RelativeRect codeCell(int index);
FrameCode frameCode(int number);
/// Nothing when the check bits do not fit.
std::optional<int> numberOf(const FrameCode& code);

} // namespace anadrome::testing_support
