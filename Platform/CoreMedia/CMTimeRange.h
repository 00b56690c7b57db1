#pragma once

#include "Platform/CoreMedia/CMTime.h"

namespace anadrome {

/// The times from start up to, but not including, start + duration.
struct CMTimeRange {
    CMTime start;
    CMTime duration;
};

inline constexpr CMTimeRange kCMTimeRangeZero{kCMTimeZero, kCMTimeZero};
inline constexpr CMTimeRange kCMTimeRangeInvalid{};

/// A duration with an epoch other than 0 gives an invalid range.
CMTimeRange CMTimeRangeMake(const CMTime& start, const CMTime& duration);
CMTimeRange CMTimeRangeFromTimeToTime(const CMTime& start, const CMTime& end);
CMTime CMTimeRangeGetEnd(const CMTimeRange& range);
bool CMTIMERANGE_IS_VALID(const CMTimeRange& range);
bool CMTIMERANGE_IS_EMPTY(const CMTimeRange& range);
/// Empty if the two have no time in common.
CMTimeRange CMTimeRangeGetIntersection(const CMTimeRange& a, const CMTimeRange& b);

/// The time as far through `to` as the given one is through `from`, which it may lie outside of. The exact
/// fraction where that fits, otherwise within a nanosecond. Invalid if either range is empty or not numeric.
CMTime CMTimeMapTimeFromRangeToRange(const CMTime& time, const CMTimeRange& from, const CMTimeRange& to);

/// Which stretch of a source is shown in which stretch of a target.
struct CMTimeMapping {
    CMTimeRange source;
    CMTimeRange target;
};

} // namespace anadrome
