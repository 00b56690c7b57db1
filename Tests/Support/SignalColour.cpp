#include "Tests/Support/SignalColour.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

namespace {

struct LumaWeights {
    double red;
    double blue;
};

LumaWeights weightsOf(AVColorSpace matrix) {
    switch (matrix) {
    case AVCOL_SPC_SMPTE170M:
    case AVCOL_SPC_BT470BG:
        return {0.299, 0.114};
    case AVCOL_SPC_BT2020_NCL:
        return {0.2627, 0.0593};
    default:
        return {0.2126, 0.0722};
    }
}

std::uint16_t rounded(double value) {
    return static_cast<std::uint16_t>(std::lround(value));
}

} // namespace

CodeValues codeValues(SignalRgb colour, const SignalCoding& coding) {
    const auto [red, blue] = weightsOf(coding.matrix);
    const double luma = red * colour.red + (1 - red - blue) * colour.green + blue * colour.blue;
    const double blueDifference = (colour.blue - luma) / (2 * (1 - blue));
    const double redDifference = (colour.red - luma) / (2 * (1 - red));

    const double top = std::ldexp(1.0, coding.depth) - 1;
    const double middle = std::ldexp(1.0, coding.depth - 1);
    const double step = std::ldexp(1.0, coding.depth - 8);
    const double black = coding.fullRange ? 0 : 16 * step;
    const double lumaSpan = coding.fullRange ? top : 219 * step;
    const double chromaSpan = coding.fullRange ? top : 224 * step;
    const auto difference = [&](double value) {
        return rounded(std::min(top, std::max(0.0, middle + chromaSpan * value)));
    };
    return {rounded(black + lumaSpan * luma), difference(blueDifference), difference(redDifference)};
}

} // namespace anadrome::testing_support
