#pragma once

#include "Tests/Support/Libav.h"

namespace anadrome::testing_support {

enum class ColourPreset { Bt709, Bt601, Hlg, Pq, Untagged };

struct ColourTags {
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
};

ColourTags tagsOf(ColourPreset preset);

} // namespace anadrome::testing_support
