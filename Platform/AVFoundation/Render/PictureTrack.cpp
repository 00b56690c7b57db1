#include "Platform/AVFoundation/Render/PictureTrack.h"

#include "Platform/AVFoundation/AVError.h"

#include <algorithm>

namespace anadrome::render {

namespace {

/// Times in a file are rounded to its ticks: a picture counts as on screen from half a tick before its time.
CMTime roundingOf(const AVAssetTrack& source) {
    return CMTimeMake(1, 2 * std::clamp(source.naturalTimeScale(), 1, 1 << 29));
}

} // namespace

PictureTrack::PictureTrack(const AVAssetTrackRef& track)
    : m_segments(track->segments()), m_timeScale(std::max(track->naturalTimeScale(), 1)) {}

PictureTrack::~PictureTrack() {
    leaveSegment();
}

const AVAssetTrackSegment* PictureTrack::segment() const {
    return m_index < m_segments.size() ? &m_segments[m_index] : nullptr;
}

std::optional<NSError> PictureTrack::open() {
    if (m_pipeline)
        return std::nullopt;
    Result<std::shared_ptr<libav::TrackPipeline>> started =
        libav::TrackPipeline::start(segment()->source, {});
    if (!started)
        return started.error();
    m_pipeline = *started;
    if (std::optional<NSError> error = takeNext())
        return error;
    return m_upcoming ? std::nullopt : std::optional(makeAVError(AVErrorDecodeFailed));
}

void PictureTrack::leaveSegment() {
    if (m_pipeline)
        m_pipeline->cancel();
    m_pipeline.reset();
    m_shown.reset();
    m_upcoming.reset();
}

std::optional<NSError> PictureTrack::takeNext() {
    m_upcoming = m_pipeline->next();
    return m_upcoming ? std::nullopt : m_pipeline->error();
}

std::optional<NSError> PictureTrack::showUpTo(const CMTime& sourceTime) {
    const CMTime limit = CMTimeAdd(sourceTime, roundingOf(*segment()->source));
    while (m_upcoming &&
           (!m_shown || CMTimeCompare(CMSampleBufferGetPresentationTimeStamp(m_upcoming), limit) <= 0)) {
        m_shown = std::move(m_upcoming);
        if (std::optional<NSError> error = takeNext())
            return error;
    }
    return std::nullopt;
}

Result<TrackPicture> PictureTrack::at(const CMTime& time) {
    while (segment() && CMTimeCompare(CMTimeRangeGetEnd(segment()->timeMapping.target), time) <= 0) {
        leaveSegment();
        ++m_index;
    }
    if (!segment() || segment()->isEmpty())
        return TrackPicture{};
    if (std::optional<NSError> error = open())
        return *error;
    const auto& [source, target] = segment()->timeMapping;
    if (std::optional<NSError> error = showUpTo(CMTimeMapTimeFromRangeToRange(time, target, source)))
        return *error;
    return TrackPicture{CMSampleBufferGetImageBuffer(m_shown), segment()->source};
}

Result<std::optional<PictureTrack::TimedPicture>> PictureTrack::next() {
    for (; segment(); leaveSegment(), ++m_index) {
        if (segment()->isEmpty())
            continue;
        const auto& [source, target] = segment()->timeMapping;
        const bool isFirst = !m_pipeline;
        if (std::optional<NSError> error = open())
            return *error;
        CMTime time = target.start;
        if (isFirst) {
            if (std::optional<NSError> error = showUpTo(source.start))
                return *error;
        } else {
            if (!m_upcoming)
                continue;
            const CMTime sourceTime = CMSampleBufferGetPresentationTimeStamp(m_upcoming);
            if (CMTimeCompare(sourceTime, CMTimeRangeGetEnd(source)) >= 0)
                continue;
            time = CMTimeMapTimeFromRangeToRange(sourceTime, source, target);
            m_shown = std::move(m_upcoming);
            if (std::optional<NSError> error = takeNext())
                return *error;
        }
        return std::optional(
            TimedPicture{{CMSampleBufferGetImageBuffer(m_shown), segment()->source},
                         CMTimeConvertScale(time, m_timeScale, CMTimeRoundingMethod::Default)});
    }
    return std::optional<TimedPicture>();
}

} // namespace anadrome::render
