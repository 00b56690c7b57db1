#include "Platform/CoreMedia/CMTimeRange.h"

namespace anadrome {

CMTimeRange CMTimeRangeMake(const CMTime& start, const CMTime& duration) {
    return duration.epoch == 0 ? CMTimeRange{start, duration} : kCMTimeRangeInvalid;
}

CMTimeRange CMTimeRangeFromTimeToTime(const CMTime& start, const CMTime& end) {
    return CMTimeRangeMake(start, CMTimeSubtract(end, start));
}

CMTime CMTimeRangeGetEnd(const CMTimeRange& range) {
    return CMTIMERANGE_IS_VALID(range) ? CMTimeAdd(range.start, range.duration) : kCMTimeInvalid;
}

bool CMTIMERANGE_IS_VALID(const CMTimeRange& range) {
    return CMTIME_IS_VALID(range.start) && CMTIME_IS_VALID(range.duration) && range.duration.epoch == 0 &&
           range.duration.value >= 0;
}

bool CMTIMERANGE_IS_EMPTY(const CMTimeRange& range) {
    return CMTIMERANGE_IS_VALID(range) && CMTimeCompare(range.duration, kCMTimeZero) == 0;
}

bool CMTimeRangeContainsTime(const CMTimeRange& range, const CMTime& time) {
    return CMTIMERANGE_IS_VALID(range) && CMTIME_IS_NUMERIC(time) && CMTimeCompare(range.start, time) <= 0 &&
           CMTimeCompare(time, CMTimeRangeGetEnd(range)) < 0;
}

CMTimeRange CMTimeRangeGetIntersection(const CMTimeRange& a, const CMTimeRange& b) {
    if (!CMTIMERANGE_IS_VALID(a) || !CMTIMERANGE_IS_VALID(b))
        return kCMTimeRangeInvalid;
    const CMTime start = CMTimeMaximum(a.start, b.start);
    const CMTime end = CMTimeMinimum(CMTimeRangeGetEnd(a), CMTimeRangeGetEnd(b));
    return CMTimeCompare(start, end) < 0 ? CMTimeRangeFromTimeToTime(start, end) : kCMTimeRangeZero;
}

} // namespace anadrome
