#pragma once

#include "Tests/Support/LumaPicture.h"

#include <array>
#include <optional>

namespace anadrome::testing_support {

/// The number in the cells, read the way up that the corners tell. Nothing if
/// the picture is not a numbered one, or its cells are neither clearly black
/// nor clearly white (two frames blended), or the check bits do not fit.
std::optional<int> readFrameNumber(const LumaPicture& picture);

enum class CornerColour { Red, Green, Blue, Yellow, Other };

/// The colours at the top left, top right, bottom left and bottom right.
using CornerColours = std::array<CornerColour, 4>;
CornerColours cornerColours(const AVFrame& frame);

inline constexpr CornerColours kUprightCorners = {CornerColour::Red, CornerColour::Green, CornerColour::Blue,
                                                  CornerColour::Yellow};

} // namespace anadrome::testing_support
