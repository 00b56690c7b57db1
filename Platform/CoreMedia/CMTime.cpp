#include "Platform/CoreMedia/CMTime.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <optional>

namespace anadrome {

namespace {

/// Products of a 64-bit value with up to two 31-bit factors fit, with room for a sum.
__extension__ typedef __int128 Int128;

constexpr std::int64_t maximumScale = std::numeric_limits<std::int32_t>::max();

/// In the order of CMTimeCompare().
enum class Kind { negativeInfinity, numeric, indefinite, positiveInfinity, invalid };

Kind kindOf(const CMTime& time) {
    if (CMTIME_IS_INVALID(time))
        return Kind::invalid;
    if (CMTIME_IS_POSITIVE_INFINITY(time))
        return Kind::positiveInfinity;
    if (CMTIME_IS_NEGATIVE_INFINITY(time))
        return Kind::negativeInfinity;
    if (CMTIME_IS_INDEFINITE(time))
        return Kind::indefinite;
    // The fields are open, so a time can claim to be numeric without a fraction that means something.
    return time.timescale > 0 ? Kind::numeric : Kind::invalid;
}

bool isInfinite(Kind kind) {
    return kind == Kind::positiveInfinity || kind == Kind::negativeInfinity;
}

CMTime infinity(bool isPositive) {
    return isPositive ? kCMTimePositiveInfinity : kCMTimeNegativeInfinity;
}

/// A time that isn't numeric, times a factor that is `sign` of 0.
CMTime multipliedSpecial(const CMTime& time, int sign) {
    const Kind kind = kindOf(time);
    if (!isInfinite(kind))
        return kind == Kind::indefinite ? kCMTimeIndefinite : kCMTimeInvalid;
    return sign == 0 ? kCMTimeInvalid : infinity((kind == Kind::positiveInfinity) == (sign > 0));
}

template <typename Number>
int signOf(Number number) {
    return (number > 0) - (number < 0);
}

bool fits(Int128 value) {
    return value >= std::numeric_limits<std::int64_t>::min() &&
           value <= std::numeric_limits<std::int64_t>::max();
}

std::uint32_t roundedFlagIf(bool isRounded) {
    return isRounded ? std::uint32_t{kCMTimeFlags_HasBeenRounded} : 0;
}

/// Whether a quotient with this remainder, which isn't 0, is rounded away from zero instead of toward it.
bool goesAwayFromZero(Int128 remainder, Int128 denominator, CMTimeRoundingMethod method) {
    const bool isPositive = remainder > 0;
    switch (method) {
    case CMTimeRoundingMethod::RoundHalfAwayFromZero:
        return (isPositive ? remainder : -remainder) * 2 >= denominator;
    case CMTimeRoundingMethod::RoundAwayFromZero:
        return true;
    case CMTimeRoundingMethod::RoundTowardPositiveInfinity:
        return isPositive;
    case CMTimeRoundingMethod::RoundTowardNegativeInfinity:
        return !isPositive;
    case CMTimeRoundingMethod::RoundTowardZero:
    case CMTimeRoundingMethod::QuickTime:
        return false;
    }
    return false;
}

struct Quotient {
    Int128 value;
    bool isExact;
};

/// Precondition: the denominator is positive.
Quotient divide(Int128 numerator, Int128 denominator, CMTimeRoundingMethod method) {
    const Int128 quotient = numerator / denominator;
    const Int128 remainder = numerator % denominator;
    if (remainder == 0)
        return {quotient, true};
    if (!goesAwayFromZero(remainder, denominator, method))
        return {quotient, false};
    return {quotient + (remainder > 0 ? 1 : -1), false};
}

/// The fraction of seconds at the timescale, or at the half, a quarter... of it if the value doesn't fit.
/// Preconditions: |numerator| < 2^96, denominator and scale positive.
CMTime fromFraction(Int128 numerator, Int128 denominator, std::int64_t scale, std::uint32_t flags,
                    std::int64_t epoch) {
    for (; scale > 0; scale /= 2) {
        const Quotient value = divide(numerator * scale, denominator, CMTimeRoundingMethod::Default);
        if (fits(value.value))
            return {static_cast<std::int64_t>(value.value), static_cast<std::int32_t>(scale),
                    flags | roundedFlagIf(!value.isExact), epoch};
    }
    return infinity(numerator > 0);
}

/// Empty if the two times belong to different epochs, so that no sum means anything.
std::optional<std::int64_t> epochOfSum(const CMTime& a, const CMTime& b) {
    if (a.epoch == 0 || b.epoch == 0)
        return a.epoch + b.epoch;
    return a.epoch == b.epoch ? std::optional<std::int64_t>(0) : std::nullopt;
}

CMTime addNumeric(const CMTime& a, const CMTime& b, int signOfB) {
    const auto epoch = epochOfSum(a, b);
    if (!epoch)
        return kCMTimeInvalid;
    const std::int64_t common = std::lcm(std::int64_t{a.timescale}, std::int64_t{b.timescale});
    const Int128 sum =
        Int128{a.value} * (common / a.timescale) + Int128{b.value} * signOfB * (common / b.timescale);
    const std::uint32_t flags = kCMTimeFlags_Valid | ((a.flags | b.flags) & kCMTimeFlags_HasBeenRounded);
    return fromFraction(sum, common, std::min(common, maximumScale), flags, *epoch);
}

CMTime add(const CMTime& a, const CMTime& b, int signOfB) {
    const Kind kindOfA = kindOf(a);
    const Kind kindOfB = kindOf(b);
    if (kindOfA == Kind::invalid || kindOfB == Kind::invalid)
        return kCMTimeInvalid;
    if (isInfinite(kindOfB)) {
        const CMTime infinite = multipliedSpecial(b, signOfB);
        return isInfinite(kindOfA) && kindOfA != kindOf(infinite) ? kCMTimeInvalid : infinite;
    }
    if (isInfinite(kindOfA))
        return infinity(kindOfA == Kind::positiveInfinity);
    if (kindOfA == Kind::indefinite || kindOfB == Kind::indefinite)
        return kCMTimeIndefinite;
    return addNumeric(a, b, signOfB);
}

} // namespace

CMTime CMTimeMake(std::int64_t value, std::int32_t timescale) {
    return timescale > 0 ? CMTime{value, timescale, kCMTimeFlags_Valid, 0} : kCMTimeInvalid;
}

CMTime CMTimeMakeWithSeconds(double seconds, std::int32_t preferredTimescale) {
    if (preferredTimescale <= 0 || std::isnan(seconds))
        return kCMTimeInvalid;
    for (std::int32_t scale = preferredTimescale; scale > 0; scale /= 2) {
        const double scaled = seconds * scale;
        if (scaled < -0x1p63 || scaled >= 0x1p63)
            continue;
        const auto value = static_cast<std::int64_t>(scaled);
        const bool isRounded = static_cast<double>(value) / scale != seconds;
        return {value, scale, kCMTimeFlags_Valid | roundedFlagIf(isRounded), 0};
    }
    return infinity(seconds > 0);
}

double CMTimeGetSeconds(const CMTime& time) {
    switch (kindOf(time)) {
    case Kind::numeric:
        return static_cast<double>(time.value) / time.timescale;
    case Kind::positiveInfinity:
        return std::numeric_limits<double>::infinity();
    case Kind::negativeInfinity:
        return -std::numeric_limits<double>::infinity();
    case Kind::indefinite:
    case Kind::invalid:
        break;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

CMTime CMTimeConvertScale(const CMTime& time, std::int32_t newTimescale, CMTimeRoundingMethod method) {
    if (kindOf(time) != Kind::numeric)
        return time;
    if (newTimescale <= 0)
        return kCMTimeInvalid;
    const bool isQuickTime = method == CMTimeRoundingMethod::QuickTime;
    if (isQuickTime && newTimescale > time.timescale)
        method = CMTimeRoundingMethod::RoundAwayFromZero;
    Quotient value = divide(Int128{time.value} * newTimescale, time.timescale, method);
    if (isQuickTime && time.value < 0 && value.value == 0)
        value.value = -1;
    if (!fits(value.value))
        return infinity(time.value > 0);
    return {static_cast<std::int64_t>(value.value), newTimescale, time.flags | roundedFlagIf(!value.isExact),
            time.epoch};
}

CMTime CMTimeAdd(const CMTime& a, const CMTime& b) {
    return add(a, b, 1);
}

CMTime CMTimeSubtract(const CMTime& minuend, const CMTime& subtrahend) {
    return add(minuend, subtrahend, -1);
}

CMTime CMTimeMultiply(const CMTime& time, std::int32_t factor) {
    if (kindOf(time) != Kind::numeric)
        return multipliedSpecial(time, signOf(factor));
    return fromFraction(Int128{time.value} * factor, time.timescale, time.timescale, time.flags, time.epoch);
}

int CMTimeCompare(const CMTime& a, const CMTime& b) {
    const Kind kindOfA = kindOf(a);
    const Kind kindOfB = kindOf(b);
    if (kindOfA != kindOfB)
        return kindOfA < kindOfB ? -1 : 1;
    if (kindOfA != Kind::numeric)
        return 0;
    if (a.epoch != b.epoch)
        return a.epoch < b.epoch ? -1 : 1;
    return signOf(Int128{a.value} * b.timescale - Int128{b.value} * a.timescale);
}

CMTime CMTimeMinimum(const CMTime& a, const CMTime& b) {
    return CMTimeCompare(a, b) <= 0 ? a : b;
}

CMTime CMTimeMaximum(const CMTime& a, const CMTime& b) {
    return CMTimeCompare(a, b) >= 0 ? a : b;
}

} // namespace anadrome
