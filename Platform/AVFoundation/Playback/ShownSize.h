#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"

namespace anadrome::playback {

/// The size at which a track's pictures are worth keeping for a surface that they fill as far as their shape
/// allows: an eighth of the stored size or a multiple of it, so that a surface can change a little without
/// the pictures being decoded anew. Never more than the stored size.
CMVideoDimensions shownSize(const AVAssetTrack& track, CGSize surface);

} // namespace anadrome::playback
