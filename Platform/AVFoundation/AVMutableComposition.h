#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVMutableCompositionTrack.h"

namespace anadrome {

/// An edit: an asset whose tracks are put together from stretches of files' tracks. One thread at a time, and
/// not to be changed while an export of it runs.
class AVMutableComposition final : public AVAsset {
public:
    /// A new, empty track. With the identifier 0 the composition chooses one; null if the identifier is taken
    /// or negative.
    std::shared_ptr<AVMutableCompositionTrack> addMutableTrackWithMediaType(AVMediaType mediaType,
                                                                            int preferredTrackID);

    const std::vector<AVAssetTrackRef>& tracks() const override { return m_tracks; }
    CMTime duration() const override;
    std::optional<NSError> loadError() const override { return std::nullopt; }

private:
    std::vector<AVAssetTrackRef> m_tracks;
};

} // namespace anadrome
