#pragma once

#include "Tests/Support/Libav.h"

#include <optional>
#include <string>

namespace anadrome::testing_support {

enum class ColourPreset { Bt709, Bt601, Hlg, Pq, Untagged };

struct ColourTags {
    AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
};

/// bt709, bt601, hlg, pq or untagged.
std::optional<ColourPreset> colourPresetNamed(const std::string& name);

ColourTags tagsOf(ColourPreset preset);

} // namespace anadrome::testing_support
