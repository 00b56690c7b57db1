#pragma once

#include "Platform/AVFoundation/AVAsset.h"

namespace anadrome::terminal {

/// The track of a movie file that is shown; null if there is none, or no movie.
inline AVAssetTrackRef firstVideoTrack(const URL& url) {
    const std::vector<AVAssetTrackRef> tracks =
        AVAsset::assetWithURL(url)->tracksWithMediaType(AVMediaTypeVideo);
    return tracks.empty() ? nullptr : tracks.front();
}

} // namespace anadrome::terminal
