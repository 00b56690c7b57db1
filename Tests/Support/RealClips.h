#pragma once

#include <filesystem>
#include <vector>

namespace anadrome::testing_support {

/// Where real clips are looked for. They aren't part of the project: $ANADROME_MEDIA names a folder of them,
/// or they lie beside the checkout.
std::filesystem::path realClipsFolder();

/// The clips of at most a minute, damaged ones among them, in the order of their names. Empty without the
/// folder.
std::vector<std::filesystem::path> shortRealClips();

} // namespace anadrome::testing_support
