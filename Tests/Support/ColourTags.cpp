#include "Tests/Support/ColourTags.h"

namespace anadrome::testing_support {

ColourTags tagsOf(ColourPreset preset) {
    switch (preset) {
    case ColourPreset::Bt709:
        return {AVCOL_PRI_BT709, AVCOL_TRC_BT709, AVCOL_SPC_BT709};
    case ColourPreset::Bt601:
        return {AVCOL_PRI_SMPTE170M, AVCOL_TRC_SMPTE170M, AVCOL_SPC_SMPTE170M};
    case ColourPreset::Hlg:
        return {AVCOL_PRI_BT2020, AVCOL_TRC_ARIB_STD_B67, AVCOL_SPC_BT2020_NCL};
    case ColourPreset::Pq:
        return {AVCOL_PRI_BT2020, AVCOL_TRC_SMPTE2084, AVCOL_SPC_BT2020_NCL};
    case ColourPreset::Untagged:
        break;
    }
    return {};
}

} // namespace anadrome::testing_support
