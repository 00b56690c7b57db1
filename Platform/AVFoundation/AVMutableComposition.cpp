#include "Platform/AVFoundation/AVMutableComposition.h"

#include <algorithm>

namespace anadrome {

std::shared_ptr<AVMutableCompositionTrack>
AVMutableComposition::addMutableTrackWithMediaType(AVMediaType mediaType, int preferredTrackID) {
    int highest = 0;
    for (const AVAssetTrackRef& track : m_tracks) {
        if (track->trackID() == preferredTrackID)
            return nullptr;
        highest = std::max(highest, track->trackID());
    }
    if (preferredTrackID < 0)
        return nullptr;
    const int trackID = preferredTrackID > 0 ? preferredTrackID : highest + 1;
    auto track = std::make_shared<AVMutableCompositionTrack>(mediaType, trackID);
    m_tracks.push_back(track);
    return track;
}

CMTime AVMutableComposition::duration() const {
    CMTime end = kCMTimeZero;
    for (const AVAssetTrackRef& track : m_tracks)
        end = CMTimeMaximum(end, CMTimeRangeGetEnd(track->timeRange()));
    return end;
}

} // namespace anadrome
