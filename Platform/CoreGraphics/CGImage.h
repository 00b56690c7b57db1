#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace anadrome {

/// A picture for a screen: red, green, blue and alpha of 8 bits each, in sRGB, row after row from the top
/// without gaps.
struct CGImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    std::size_t bytesPerRow() const { return static_cast<std::size_t>(width) * 4; }
};

} // namespace anadrome
