#include "Tests/Support/PictureLayout.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

namespace {

constexpr int kNumberBits = 16;

/// A cyclic check sum: it finds every error in one or two cells. The start value is such that no code is all
/// black or all white, so a reader always sees both levels.
constexpr unsigned checkBits(unsigned number) {
    unsigned remainder = (number << 8) ^ 0x5a0000u;
    for (int bit = kCodeCells - 1; bit >= 8; --bit)
        if (remainder & (1u << bit))
            remainder ^= 0x107u << (bit - 8);
    return remainder;
}
static_assert(checkBits(0) != 0 && checkBits(kFrameNumbers - 1) != 0xff);

} // namespace

PixelRect toPixels(const RelativeRect& rect, int width, int height) {
    const auto at = [](double part, int size) { return static_cast<int>(std::lround(part * size)); };
    return {at(rect.left, width), at(rect.top, height), at(rect.right, width), at(rect.bottom, height)};
}

RelativeRect shownAt(Orientation orientation, const RelativeRect& coded) {
    const RelativePoint first = shownAt(orientation, RelativePoint{coded.left, coded.top});
    const RelativePoint second = shownAt(orientation, RelativePoint{coded.right, coded.bottom});
    return {std::min(first.x, second.x), std::min(first.y, second.y), std::max(first.x, second.x),
            std::max(first.y, second.y)};
}

RelativeRect codeCell(int index) {
    const double width = (kCodeBand.right - kCodeBand.left) / kCodeColumns;
    const double height = (kCodeBand.bottom - kCodeBand.top) / kCodeRows;
    const int row = index / kCodeColumns;
    const double left = kCodeBand.left + width * (index % kCodeColumns);
    const double top = kCodeBand.top + height * row;
    return {left, top, left + width, top + height};
}

FrameCode frameCode(int number) {
    const unsigned bits = (static_cast<unsigned>(number) << 8) | checkBits(static_cast<unsigned>(number));
    FrameCode code;
    for (int cell = 0; cell < kCodeCells; ++cell)
        code[static_cast<std::size_t>(cell)] = (bits >> (kCodeCells - 1 - cell)) & 1u;
    return code;
}

std::optional<int> numberOf(const FrameCode& code) {
    int number = 0;
    for (std::size_t cell = 0; cell < kNumberBits; ++cell)
        number = number * 2 + (code[cell] ? 1 : 0);
    return frameCode(number) == code ? std::optional(number) : std::nullopt;
}

} // namespace anadrome::testing_support
