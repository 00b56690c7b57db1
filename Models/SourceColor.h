#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/Foundation/NSDictionary.h"

#include <optional>

namespace anadrome {

/// The colour of a source as far as it decides how its reversal is encoded.
struct SourceColor {
    /// The three entries for the writer, or absent if the source tells nothing of itself.
    std::optional<Dictionary> colorProperties;
    /// Decided by the transfer function alone.
    bool isHDR = false;
};

SourceColor sourceColor(const AVAssetTrack& track);

} // namespace anadrome
