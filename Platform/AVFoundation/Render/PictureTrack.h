#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"
#include "Platform/AVFoundation/Libav/TrackPipeline.h"

#include <optional>

namespace anadrome::render {

/// A picture of a file's track.
struct TrackPicture {
    /// Null where the track has nothing.
    CVPixelBufferRef pixels;
    AVAssetTrackRef source;
};

/// The pictures of one track along its time, forwards, decoded as they are asked for. Only the stretch that
/// is being shown is open. Use either at() or next(). One thread at a time.
class PictureTrack {
public:
    explicit PictureTrack(const AVAssetTrackRef& track);
    ~PictureTrack();
    PictureTrack(const PictureTrack&) = delete;
    PictureTrack& operator=(const PictureTrack&) = delete;

    /// The picture on screen at a time of the track; times must not fall. A picture stays until the next one
    /// comes, the last of a stretch to its end, and the first of a stretch is there from its beginning.
    Result<TrackPicture> at(const CMTime& time);

    /// Lets go of what lies before the time of the track, which isn't shown.
    void passBy(const CMTime& time);

    struct TimedPicture {
        TrackPicture picture;
        /// At the track's natural timescale, like the duration.
        CMTime time;
        CMTime duration;
    };
    /// Every picture in turn, with the time at which it comes on screen and how long it stays; empty at the
    /// end.
    Result<std::optional<TimedPicture>> next();

private:
    const AVAssetTrackSegment* segment() const;
    std::optional<NSError> open();
    void leaveSegment();
    /// Moves on to the picture that is on screen at the source's time.
    std::optional<NSError> showUpTo(const CMTime& sourceTime);
    std::optional<NSError> takeNext();
    /// When the shown picture leaves the screen, in the track's time.
    CMTime endOfShown() const;
    CMTime atTrackScale(const CMTime& time) const;

    const std::vector<AVAssetTrackSegment> m_segments;
    const std::int32_t m_timeScale;
    std::size_t m_index = 0;

    // Of the open segment.
    std::shared_ptr<libav::TrackPipeline> m_pipeline;
    CMSampleBufferRef m_shown;
    CMSampleBufferRef m_upcoming;
};

} // namespace anadrome::render
