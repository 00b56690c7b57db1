#include "Platform/AVFoundation/AVAsset.h"

#include "Platform/AVFoundation/Libav/TrackFacts.h"

namespace anadrome {

std::shared_ptr<AVAsset> AVAsset::assetWithURL(const URL& url) {
    return std::make_shared<AVURLAsset>(url);
}

std::vector<AVAssetTrackRef> AVAsset::tracksWithMediaType(AVMediaType mediaType) const {
    std::vector<AVAssetTrackRef> matching;
    for (const AVAssetTrackRef& track : tracks())
        if (track->mediaType() == mediaType)
            matching.push_back(track);
    return matching;
}

const std::vector<AVAssetTrackRef>& AVURLAsset::tracks() const {
    load();
    return m_tracks;
}

CMTime AVURLAsset::duration() const {
    load();
    return m_duration;
}

std::optional<NSError> AVURLAsset::loadError() const {
    load();
    return m_loadError;
}

void AVURLAsset::load() const {
    std::call_once(m_loaded, [this] {
        Result<std::vector<AVAssetTrack::Facts>> found = libav::readTrackFacts(m_url);
        if (!found) {
            m_loadError = found.error();
            return;
        }
        for (AVAssetTrack::Facts& facts : *found) {
            m_duration = CMTimeMaximum(m_duration, CMTimeRangeGetEnd(facts.timeRange));
            m_tracks.push_back(std::make_shared<AVAssetTrack>(std::move(facts)));
        }
    });
}

} // namespace anadrome
