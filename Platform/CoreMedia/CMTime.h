#pragma once

#include <cstdint>

namespace anadrome {

enum CMTimeFlags : std::uint32_t {
    kCMTimeFlags_Valid = 1,
    kCMTimeFlags_HasBeenRounded = 2,
    kCMTimeFlags_PositiveInfinity = 4,
    kCMTimeFlags_NegativeInfinity = 8,
    kCMTimeFlags_Indefinite = 16,
    kCMTimeFlags_ImpliedValueFlagsMask = 28,
};

/// A time or a duration as the exact fraction value / timescale of a second, or one of the special times:
/// invalid (also the default), indefinite, plus or minus infinity. Compare with CMTimeCompare and the CMTIME_
/// tests, never field by field: the same time has many forms. The epoch tells runs of a looping clock apart
/// and is 0 in files.
struct CMTime {
    std::int64_t value = 0;
    std::int32_t timescale = 0;
    std::uint32_t flags = 0;
    std::int64_t epoch = 0;
};

inline constexpr CMTime kCMTimeInvalid{};
inline constexpr CMTime kCMTimeZero{0, 1, kCMTimeFlags_Valid, 0};
inline constexpr CMTime kCMTimeIndefinite{0, 0, kCMTimeFlags_Valid | kCMTimeFlags_Indefinite, 0};
inline constexpr CMTime kCMTimePositiveInfinity{0, 0, kCMTimeFlags_Valid | kCMTimeFlags_PositiveInfinity, 0};
inline constexpr CMTime kCMTimeNegativeInfinity{0, 0, kCMTimeFlags_Valid | kCMTimeFlags_NegativeInfinity, 0};

constexpr bool CMTIME_IS_VALID(const CMTime& t) {
    return (t.flags & kCMTimeFlags_Valid) != 0;
}
constexpr bool CMTIME_IS_INVALID(const CMTime& t) {
    return !CMTIME_IS_VALID(t);
}
constexpr bool CMTIME_IS_INDEFINITE(const CMTime& t) {
    return CMTIME_IS_VALID(t) && (t.flags & kCMTimeFlags_Indefinite) != 0;
}
constexpr bool CMTIME_IS_POSITIVE_INFINITY(const CMTime& t) {
    return CMTIME_IS_VALID(t) && (t.flags & kCMTimeFlags_PositiveInfinity) != 0;
}
constexpr bool CMTIME_IS_NEGATIVE_INFINITY(const CMTime& t) {
    return CMTIME_IS_VALID(t) && (t.flags & kCMTimeFlags_NegativeInfinity) != 0;
}
/// Valid and none of the special times.
constexpr bool CMTIME_IS_NUMERIC(const CMTime& t) {
    return (t.flags & (kCMTimeFlags_Valid | kCMTimeFlags_ImpliedValueFlagsMask)) == kCMTimeFlags_Valid;
}
constexpr bool CMTIME_HAS_BEEN_ROUNDED(const CMTime& t) {
    return CMTIME_IS_NUMERIC(t) && (t.flags & kCMTimeFlags_HasBeenRounded) != 0;
}

enum class CMTimeRoundingMethod {
    RoundHalfAwayFromZero = 1,
    RoundTowardZero = 2,
    RoundAwayFromZero = 3,
    /// Toward zero when converting to a smaller timescale, away from zero to a larger one; never a negative
    /// time to 0.
    QuickTime = 4,
    RoundTowardPositiveInfinity = 5,
    RoundTowardNegativeInfinity = 6,
    Default = RoundHalfAwayFromZero,
};

/// A timescale of 0 or less gives an invalid time.
CMTime CMTimeMake(std::int64_t value, std::int32_t timescale);
/// Cuts toward zero to the timescale and sets HasBeenRounded when that lost anything. Seconds too many for
/// the timescale halve it until they fit, at 1 they become infinity. Not a number gives an invalid time.
CMTime CMTimeMakeWithSeconds(double seconds, std::int32_t preferredTimescale);
/// Not a number for invalid and indefinite times, infinity for the infinite ones.
double CMTimeGetSeconds(const CMTime& time);

/// Non-numeric times pass unchanged. A value too large for the timescale becomes infinity.
CMTime CMTimeConvertScale(const CMTime& time, std::int32_t newTimescale, CMTimeRoundingMethod method);

/// Exact at the least common timescale; rounded, and flagged so, only where that or the value would overflow.
CMTime CMTimeAdd(const CMTime& a, const CMTime& b);
CMTime CMTimeSubtract(const CMTime& minuend, const CMTime& subtrahend);
/// Keeps indefinite times and infinities, these with the factor's sign; an infinity times 0 is invalid.
CMTime CMTimeMultiply(const CMTime& time, std::int32_t factor);

/// -1, 0 or 1. A total order: -infinity < numeric < indefinite < +infinity < invalid; numeric times are
/// compared by epoch, then as exact fractions.
int CMTimeCompare(const CMTime& a, const CMTime& b);
CMTime CMTimeMinimum(const CMTime& a, const CMTime& b);
CMTime CMTimeMaximum(const CMTime& a, const CMTime& b);

} // namespace anadrome
