#pragma once

#include "Platform/AVFoundation/AVAssetTrackSegment.h"
#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/CoreGraphics/CGGeometry.h"
#include "Platform/CoreMedia/CMTimeRange.h"
#include "Platform/Foundation/URL.h"

#include <memory>
#include <vector>

namespace anadrome {

/// One track of an asset. That of a file is immutable; any thread.
class AVAssetTrack : public std::enable_shared_from_this<AVAssetTrack> {
public:
    struct Facts {
        AVMediaType mediaType = AVMediaTypeVideo;
        URL url{};
        int streamIndex = 0;
        int trackID = 0;
        CMTimeRange timeRange = kCMTimeRangeZero;
        std::int32_t naturalTimeScale = 0;
        float estimatedDataRate = 0;
        std::int64_t sampleCount = 0;
        std::vector<CMFormatDescriptionRef> formatDescriptions{};
        CGSize naturalSize{};
        CGAffineTransform preferredTransform{};
        float nominalFrameRate = 0;
    };
    explicit AVAssetTrack(Facts facts) : m_facts(std::move(facts)) {}
    virtual ~AVAssetTrack() = default;

    /// Positive, and no other track's of the asset.
    int trackID() const { return m_facts.trackID; }
    AVMediaType mediaType() const { return m_facts.mediaType; }
    /// When the track has media, in the asset's time. A start above zero means that nothing comes before it.
    const CMTimeRange& timeRange() const { return m_facts.timeRange; }
    /// Units a second of the track's own times.
    std::int32_t naturalTimeScale() const { return m_facts.naturalTimeScale; }
    /// Bits a second, averaged over the track; 0 if unknown.
    float estimatedDataRate() const { return m_facts.estimatedDataRate; }
    /// One for a track whose samples are all alike.
    const std::vector<CMFormatDescriptionRef>& formatDescriptions() const {
        return m_facts.formatDescriptions;
    }

    /// The size in square pixels before the transform; zero for sound.
    CGSize naturalSize() const { return m_facts.naturalSize; }
    /// How the picture is to be turned for showing: as the file has it, and moved so that its top left corner
    /// comes to lie in the origin, which files often get wrong.
    const CGAffineTransform& preferredTransform() const { return m_facts.preferredTransform; }
    /// Pictures a second on average; 0 if unknown.
    float nominalFrameRate() const { return m_facts.nominalFrameRate; }

    /// What the track is made of, from zero to its end without a gap.
    virtual std::vector<AVAssetTrackSegment> segments() const;

    /// Samples that are presented: pictures of a video track.
    std::int64_t sampleCount() const { return m_facts.sampleCount; }
    /// Where the samples of a file's track lie, for the reader.
    const URL& url() const { return m_facts.url; }
    int streamIndex() const { return m_facts.streamIndex; }

protected:
    Facts m_facts;
};

using AVAssetTrackRef = std::shared_ptr<const AVAssetTrack>;

} // namespace anadrome
