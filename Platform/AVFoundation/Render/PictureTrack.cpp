#include "Platform/AVFoundation/Render/PictureTrack.h"

#include "Platform/AVFoundation/AVError.h"

#include <algorithm>

namespace anadrome::render {

namespace {

/// How much before its time a picture counts as on screen. Files that count in milliseconds round the times
/// of usual frame rates, which would make a steady clip stutter: half of one. In others times are exact, and
/// only mapping one through a scaled stretch may lose a nanosecond.
CMTime roundingOf(const AVAssetTrack& source) {
    constexpr std::int32_t milliseconds = 1000;
    return source.naturalTimeScale() == milliseconds ? CMTimeMake(1, 2 * milliseconds)
                                                     : CMTimeMake(2, 1'000'000'000);
}

/// Whether the segment ends before the source's time. Where it ends with the source, the source's own
/// pictures count: in some containers the last of them lies a little behind what the file says of its length.
bool isCutOff(const AVAssetTrackSegment& segment, const CMTime& sourceTime) {
    const CMTime end = CMTimeRangeGetEnd(segment.timeMapping.source);
    const bool endsWithSource = CMTimeCompare(end, CMTimeRangeGetEnd(segment.source->timeRange())) >= 0;
    return !endsWithSource && CMTimeCompare(sourceTime, end) >= 0;
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

void PictureTrack::passBy(const CMTime& time) {
    while (segment() && CMTimeCompare(CMTimeRangeGetEnd(segment()->timeMapping.target), time) <= 0) {
        leaveSegment();
        ++m_index;
    }
}

Result<TrackPicture> PictureTrack::at(const CMTime& time) {
    passBy(time);
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
            if (isCutOff(*segment(), sourceTime))
                continue;
            time = CMTimeMapTimeFromRangeToRange(sourceTime, source, target);
            m_shown = std::move(m_upcoming);
            if (std::optional<NSError> error = takeNext())
                return *error;
        }
        time = atTrackScale(time);
        return std::optional(TimedPicture{{CMSampleBufferGetImageBuffer(m_shown), segment()->source},
                                          time,
                                          CMTimeSubtract(atTrackScale(endOfShown()), time)});
    }
    return std::optional<TimedPicture>();
}

CMTime PictureTrack::endOfShown() const {
    const auto& [source, target] = segment()->timeMapping;
    const CMTime end = CMTimeRangeGetEnd(target);
    if (!m_upcoming)
        return end;
    const CMTime next = CMSampleBufferGetPresentationTimeStamp(m_upcoming);
    return CMTimeMinimum(end, CMTimeMapTimeFromRangeToRange(next, source, target));
}

CMTime PictureTrack::atTrackScale(const CMTime& time) const {
    return CMTimeConvertScale(time, m_timeScale, CMTimeRoundingMethod::Default);
}

} // namespace anadrome::render
