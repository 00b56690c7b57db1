#include "Platform/AVFoundation/AVMutableCompositionTrack.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/Foundation/Print.h"

#include <algorithm>

namespace anadrome {

namespace {

constexpr std::int32_t timeScaleWithoutMedia = 600;

std::optional<NSError> rejection(const char* why) {
    return makeAVError(AVErrorUnknown, NSError(AVFoundationErrorDomain, AVErrorUnknown, why));
}

bool isNumeric(const CMTimeRange& range) {
    return CMTIMERANGE_IS_VALID(range) && CMTIME_IS_NUMERIC(range.start) && CMTIME_IS_NUMERIC(range.duration);
}

void moveBy(AVAssetTrackSegment& segment, const CMTime& distance) {
    CMTime& start = segment.timeMapping.target.start;
    start = CMTimeAdd(start, distance);
}

AVAssetTrackSegment emptySegment(const CMTimeRange& target) {
    return {nullptr, {kCMTimeRangeInvalid, target}};
}

/// Cuts a segment at a time inside of its target range and gives the part behind.
AVAssetTrackSegment cutOff(AVAssetTrackSegment& segment, const CMTime& time) {
    AVAssetTrackSegment behind = segment;
    const auto [source, target] = segment.timeMapping;
    behind.timeMapping.target = CMTimeRangeFromTimeToTime(time, CMTimeRangeGetEnd(target));
    segment.timeMapping.target = CMTimeRangeFromTimeToTime(target.start, time);
    if (!segment.isEmpty()) {
        const CMTime cut = CMTimeMapTimeFromRangeToRange(time, target, source);
        behind.timeMapping.source = CMTimeRangeFromTimeToTime(cut, CMTimeRangeGetEnd(source));
        segment.timeMapping.source = CMTimeRangeFromTimeToTime(source.start, cut);
    }
    return behind;
}

} // namespace

AVMutableCompositionTrack::AVMutableCompositionTrack(AVMediaType mediaType, int trackID) : AVAssetTrack({}) {
    m_facts.mediaType = mediaType;
    m_facts.trackID = trackID;
    m_facts.naturalTimeScale = timeScaleWithoutMedia;
}

CMTime AVMutableCompositionTrack::end() const {
    return m_segments.empty() ? kCMTimeZero : CMTimeRangeGetEnd(m_segments.back().timeMapping.target);
}

/// Makes a segment begin at the time and gives its index; the number of segments at or behind the end.
std::size_t AVMutableCompositionTrack::splitAt(const CMTime& time) {
    const auto found = std::ranges::find_if(m_segments, [&](const AVAssetTrackSegment& segment) {
        return CMTimeCompare(CMTimeRangeGetEnd(segment.timeMapping.target), time) > 0;
    });
    const auto index = static_cast<std::size_t>(found - m_segments.begin());
    if (found == m_segments.end() || CMTimeCompare(found->timeMapping.target.start, time) >= 0)
        return index;
    AVAssetTrackSegment behind = cutOff(*found, time);
    m_segments.insert(found + 1, std::move(behind));
    return index + 1;
}

std::optional<NSError> AVMutableCompositionTrack::insertTimeRange(const CMTimeRange& range,
                                                                  const AVAssetTrackRef& ofTrack,
                                                                  const CMTime& atTime) {
    if (!ofTrack || ofTrack->mediaType() != mediaType())
        return rejection("The track to insert is of another medium");
    if (dynamic_cast<const AVMutableCompositionTrack*>(ofTrack.get()))
        return rejection("The track to insert is itself composed");
    if (!isNumeric(range) || CMTIMERANGE_IS_EMPTY(range) ||
        CMTIMERANGE_IS_EMPTY(CMTimeRangeGetIntersection(range, ofTrack->timeRange())))
        return rejection("The range to insert has nothing of the track");
    const CMTime start = CMTIME_IS_VALID(atTime) ? atTime : end();
    if (!CMTIME_IS_NUMERIC(start) || start.value < 0)
        return rejection("Nothing can be inserted at that time");

    if (CMTimeCompare(start, end()) > 0)
        m_segments.push_back(emptySegment(CMTimeRangeFromTimeToTime(end(), start)));
    const std::size_t index = splitAt(start);
    for (std::size_t i = index; i < m_segments.size(); ++i)
        moveBy(m_segments[i], range.duration);
    m_segments.insert(m_segments.begin() + static_cast<std::ptrdiff_t>(index),
                      {ofTrack, {range, CMTimeRangeMake(start, range.duration)}});
    updateFacts();
    return std::nullopt;
}

void AVMutableCompositionTrack::scaleTimeRange(const CMTimeRange& range, const CMTime& toDuration) {
    const bool possible = isNumeric(range) && !CMTIMERANGE_IS_EMPTY(range) && CMTIME_IS_NUMERIC(toDuration) &&
                          toDuration.value >= 0;
    if (!possible) {
        debugLog("scaleTimeRange: a range or a duration that can't be scaled was ignored");
        return;
    }
    const CMTime change = CMTimeSubtract(toDuration, range.duration);
    const std::size_t first = splitAt(range.start);
    const std::size_t behind = splitAt(CMTimeRangeGetEnd(range));
    CMTime start = range.start;
    for (std::size_t i = first; i < behind; ++i) {
        CMTimeRange& target = m_segments[i].timeMapping.target;
        const CMTime end = toDuration.value == 0
                               ? range.start
                               : CMTimeMapTimeFromRangeToRange(CMTimeRangeGetEnd(target), range,
                                                               CMTimeRangeMake(range.start, toDuration));
        target = CMTimeRangeFromTimeToTime(start, end);
        start = end;
    }
    for (std::size_t i = behind; i < m_segments.size(); ++i)
        moveBy(m_segments[i], change);
    updateFacts();
}

/// What a track tells of itself follows its segments.
void AVMutableCompositionTrack::updateFacts() {
    m_facts.timeRange = CMTimeRangeMake(kCMTimeZero, end());
    const auto first = std::ranges::find_if(
        m_segments, [](const AVAssetTrackSegment& segment) { return !segment.isEmpty(); });
    if (first == m_segments.end())
        return;
    m_facts.naturalTimeScale = first->source->naturalTimeScale();
    m_facts.naturalSize = first->source->naturalSize();
    m_facts.nominalFrameRate = first->source->nominalFrameRate();
    m_facts.formatDescriptions = first->source->formatDescriptions();
}

} // namespace anadrome
