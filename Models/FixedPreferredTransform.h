#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"

namespace anadrome {

/// The track's display transform with the translation that its eight regular orientations need: files carry
/// wrong ones. Any other transform keeps its own translation.
CGAffineTransform fixedPreferredTransform(const AVAssetTrack& track);

} // namespace anadrome
