#include "Platform/CoreMedia/CMTimeRange.h"

#include <limits>
#include <numeric>

namespace anadrome {

namespace {

/// Takes what two factors of a product have in common out of them.
void cancel(std::int64_t& numerator, std::int64_t& denominator) {
    const std::int64_t common = std::gcd(numerator, denominator);
    if (common > 1) {
        numerator /= common;
        denominator /= common;
    }
}

bool isNumericAndNotEmpty(const CMTimeRange& range) {
    return CMTIME_IS_NUMERIC(range.start) && CMTIME_IS_NUMERIC(range.duration) && range.duration.value > 0;
}

/// time * a / b.
CMTime scaled(const CMTime& time, const CMTime& a, const CMTime& b) {
    std::int64_t over[] = {time.value, a.value, b.timescale};
    std::int64_t under[] = {time.timescale, a.timescale, b.value};
    for (std::int64_t& factor : over)
        for (std::int64_t& divisor : under)
            cancel(factor, divisor);
    std::int64_t value = 0;
    std::int64_t timescale = 0;
    const bool fits = !__builtin_mul_overflow(over[0], over[1], &value) &&
                      !__builtin_mul_overflow(value, over[2], &value) &&
                      !__builtin_mul_overflow(under[0], under[1], &timescale) &&
                      !__builtin_mul_overflow(timescale, under[2], &timescale) &&
                      timescale <= std::numeric_limits<std::int32_t>::max();
    if (fits)
        return CMTimeMake(value, static_cast<std::int32_t>(timescale));
    const long double seconds =
        static_cast<long double>(over[0]) / under[0] * over[1] / under[1] * over[2] / under[2];
    constexpr std::int32_t nanoseconds = 1'000'000'000;
    return CMTimeMakeWithSeconds(static_cast<double>(seconds), nanoseconds);
}

} // namespace

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

CMTimeRange CMTimeRangeGetIntersection(const CMTimeRange& a, const CMTimeRange& b) {
    if (!CMTIMERANGE_IS_VALID(a) || !CMTIMERANGE_IS_VALID(b))
        return kCMTimeRangeInvalid;
    const CMTime start = CMTimeMaximum(a.start, b.start);
    const CMTime end = CMTimeMinimum(CMTimeRangeGetEnd(a), CMTimeRangeGetEnd(b));
    return CMTimeCompare(start, end) < 0 ? CMTimeRangeFromTimeToTime(start, end) : kCMTimeRangeZero;
}

CMTime CMTimeMapTimeFromRangeToRange(const CMTime& time, const CMTimeRange& from, const CMTimeRange& to) {
    if (!CMTIME_IS_NUMERIC(time) || !isNumericAndNotEmpty(from) || !isNumericAndNotEmpty(to))
        return kCMTimeInvalid;
    return CMTimeAdd(to.start, scaled(CMTimeSubtract(time, from.start), to.duration, from.duration));
}

} // namespace anadrome
