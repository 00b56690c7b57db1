#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"

#include <optional>
#include <string>

namespace anadrome::terminal {

/// What to say if the temporary directory's disk can't hold all the raw frames of a video track and a little
/// more; empty if it can.
std::optional<std::string> lackOfTemporarySpace(const AVAssetTrack& track);

} // namespace anadrome::terminal
