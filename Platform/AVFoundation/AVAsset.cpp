#include "Platform/AVFoundation/AVAsset.h"

#include "Platform/AVFoundation/Libav/MovieMetadata.h"
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

std::vector<AVMetadataItem> AVURLAsset::metadata() const {
    load();
    return m_metadata;
}

void AVURLAsset::load() const {
    std::call_once(m_loaded, [this] {
        Result<libav::InputFile> file = libav::InputFile::open(m_url);
        if (!file) {
            m_loadError = file.error();
            return;
        }
        m_metadata = libav::metadataOf(*file->context());
        for (AVAssetTrack::Facts& facts : libav::readTrackFacts(*file, m_url)) {
            m_duration = CMTimeMaximum(m_duration, CMTimeRangeGetEnd(facts.timeRange));
            m_tracks.push_back(std::make_shared<AVAssetTrack>(std::move(facts)));
        }
    });
}

} // namespace anadrome
