#pragma once

#include "Platform/AVFoundation/Render/Placement.h"

#include <optional>
#include <string>

namespace anadrome::render {

/// The box that the preset's pictures fit into, for pictures wider than high. Empty for an unknown preset.
std::optional<PixelSize> presetBox(const std::string& presetName);

/// The even size that a canvas gets in the box: turned with it, in its proportions, never larger than it is,
/// though no side below 16.
PixelSize fittedSize(CGSize canvas, const PixelSize& box);

} // namespace anadrome::render
