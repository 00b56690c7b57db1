#pragma once

#include "Tests/Support/Libav.h"
#include "Tests/Support/Orientation.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace anadrome::testing_support {

/// An 8-bit luma plane that somebody else owns.
struct LumaView {
    const std::uint8_t* data = nullptr;
    std::ptrdiff_t stride = 0; ///< bytes from one row to the next
    int width = 0;
    int height = 0;
};

/// The luma of a decoded YUV frame as 8 bits; it refers to the frame where that needs no conversion.
class FrameLuma {
public:
    explicit FrameLuma(const AVFrame& frame);
    const LumaView& view() const { return view_; }

    /// The mean on the 8-bit scale where black is 16 and white is 235, whatever the frame's range.
    double mean() const;

private:
    void convertDepth(const AVFrame& frame, int depth);

    LumaView view_;
    bool fullRange_ = false;
    std::vector<std::uint8_t> converted_;
};

/// How the coloured corners say the picture has been turned; nothing if
/// they are not those of a numbered picture.
std::optional<Orientation> orientationOf(const LumaView& picture);

/// The number in the cells, read the way up that the corners tell. Nothing if
/// the picture is not a numbered one, or its cells are neither clearly black
/// nor clearly white (two frames blended), or the check bits do not fit.
std::optional<int> readFrameNumber(const LumaView& picture);

enum class CornerColour { Red, Green, Blue, Yellow, Other };

/// The colours at the top left, top right, bottom left and bottom right.
using CornerColours = std::array<CornerColour, 4>;
CornerColours cornerColours(const AVFrame& frame);

inline constexpr CornerColours kUprightCorners = {CornerColour::Red, CornerColour::Green, CornerColour::Blue,
                                                  CornerColour::Yellow};

} // namespace anadrome::testing_support
