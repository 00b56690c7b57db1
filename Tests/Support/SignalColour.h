#pragma once

#include "Tests/Support/Libav.h"

#include <array>
#include <cstdint>

namespace anadrome::testing_support {

/// Signal levels from 0 to 1, already with the transfer curve applied.
struct SignalRgb {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// Code values in plane order: luma, blue difference, red difference.
using CodeValues = std::array<std::uint16_t, 3>;

struct SignalCoding {
    AVColorSpace matrix = AVCOL_SPC_BT709; ///< unspecified counts as BT.709
    bool fullRange = false;
    int depth = 8;
};

CodeValues codeValues(SignalRgb colour, const SignalCoding& coding);

} // namespace anadrome::testing_support
