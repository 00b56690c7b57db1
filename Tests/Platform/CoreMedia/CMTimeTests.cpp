#include "Platform/CoreMedia/CMTimeRange.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using namespace anadrome;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int32_t largestScale = std::numeric_limits<std::int32_t>::max();

CMTime inEpoch(CMTime time, std::int64_t epoch) {
    time.epoch = epoch;
    return time;
}

CMTime rounded(std::int64_t value, std::int32_t timescale) {
    return {value, timescale, 3, 0};
}

/// Tells forms apart that CMTimeCompare() takes as equal.
std::string formOf(const CMTime& time) {
    if (CMTIME_IS_NUMERIC(time))
        return std::to_string(time.value) + '/' + std::to_string(time.timescale) +
               (CMTIME_HAS_BEEN_ROUNDED(time) ? " rounded" : "") + " in epoch " + std::to_string(time.epoch);
    if (CMTIME_IS_INVALID(time))
        return "invalid";
    if (CMTIME_IS_INDEFINITE(time))
        return "indefinite";
    return CMTIME_IS_POSITIVE_INFINITY(time) ? "infinite" : "minus infinite";
}

#define EXPECT_FORM(actual, expected) EXPECT_EQ(formOf(actual), formOf(expected))

} // namespace

TEST(CMTime, IsMadeFromSecondsByCuttingTowardZero) {
    const struct {
        double seconds;
        std::int32_t timescale;
        CMTime time;
    } cases[] = {
        {2.368, 24, rounded(56, 24)},
        {0.29, 100, rounded(28, 100)},
        {-0.29, 100, rounded(-28, 100)},
        {1.5, 600, CMTimeMake(900, 600)},
        {1e17, 600, CMTimeMake(7500000000000000000, 75)},
        {1e18, 600, CMTimeMake(9000000000000000000, 9)},
        {1e19, 600, kCMTimePositiveInfinity},
        {-1e19, 600, kCMTimeNegativeInfinity},
        {infinite, 600, kCMTimePositiveInfinity},
        {std::nan(""), 600, kCMTimeInvalid},
        {1, 0, kCMTimeInvalid},
    };
    for (const auto& c : cases)
        EXPECT_FORM(CMTimeMakeWithSeconds(c.seconds, c.timescale), c.time);
    EXPECT_FORM(CMTimeMake(1, 0), kCMTimeInvalid);
}

TEST(CMTime, TellsItsSeconds) {
    EXPECT_EQ(CMTimeGetSeconds(inEpoch(CMTimeMake(-3, 2), 7)), -1.5);
    EXPECT_EQ(CMTimeGetSeconds(kCMTimeNegativeInfinity), -infinite);
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(kCMTimeIndefinite)));
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(kCMTimeInvalid)));
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(CMTime{1, 0, kCMTimeFlags_Valid, 0})));
}

TEST(CMTime, ChangesScaleByEachRoundingMethod) {
    using enum CMTimeRoundingMethod;
    const struct {
        CMTimeRoundingMethod method;
        // Of 5/2, -5/2, 7/3, -7/3 and -1/3 at one in a second, and of -1/3 at ten.
        std::int64_t values[6];
    } cases[] = {
        {RoundHalfAwayFromZero, {3, -3, 2, -2, 0, -3}},
        {RoundTowardZero, {2, -2, 2, -2, 0, -3}},
        {RoundAwayFromZero, {3, -3, 3, -3, -1, -4}},
        {QuickTime, {2, -2, 2, -2, -1, -4}},
        {RoundTowardPositiveInfinity, {3, -2, 3, -2, 0, -3}},
        {RoundTowardNegativeInfinity, {2, -3, 2, -3, -1, -4}},
    };
    const CMTime times[] = {CMTimeMake(5, 2),  CMTimeMake(-5, 2), CMTimeMake(7, 3),
                            CMTimeMake(-7, 3), CMTimeMake(-1, 3), CMTimeMake(-1, 3)};
    for (const auto& c : cases) {
        for (std::size_t i = 0; i < 6; ++i) {
            const std::int32_t scale = i == 5 ? 10 : 1;
            EXPECT_FORM(CMTimeConvertScale(times[i], scale, c.method), rounded(c.values[i], scale));
        }
    }
    EXPECT_FORM(CMTimeConvertScale(CMTimeMake(1, 3), 600, Default), CMTimeMake(200, 600));
    EXPECT_FORM(CMTimeConvertScale(inEpoch(rounded(1, 3), 5), 6, Default), inEpoch(rounded(2, 6), 5));
    EXPECT_FORM(CMTimeConvertScale(CMTimeMake(largest, 600), 1, Default), rounded(15372286728091293, 1));
    EXPECT_FORM(CMTimeConvertScale(CMTimeMake(largest, 1), 2, Default), kCMTimePositiveInfinity);
    EXPECT_FORM(CMTimeConvertScale(kCMTimeIndefinite, 600, Default), kCMTimeIndefinite);
    EXPECT_FORM(CMTimeConvertScale(kCMTimeZero, 0, Default), kCMTimeInvalid);
}

TEST(CMTime, AddsExactlyAtTheLeastCommonTimescale) {
    const struct {
        CMTime a, b, sum;
    } cases[] = {
        {CMTimeMake(1, 600), CMTimeMake(2, 600), CMTimeMake(3, 600)},
        {CMTimeMake(1, 4), CMTimeMake(1, 6), CMTimeMake(5, 12)},
        {CMTimeMake(1001, 30000), CMTimeMake(1024, 44100), CMTimeMake(249547, 4410000)},
        {rounded(1, 2), CMTimeMake(1, 2), rounded(2, 2)},
        // The least common timescale doesn't fit: the greatest one, rounded.
        {CMTimeMake(1, largestScale), CMTimeMake(1, 2), rounded(1073741825, largestScale)},
        {CMTimeMake(65536, 65536), CMTimeMake(65537, 65537),
         CMTimeMake(2 * std::int64_t{largestScale}, largestScale)},
        // The value doesn't fit: half the timescale.
        {CMTimeMake(largest, 600), CMTimeMake(largest, 600), CMTimeMake(largest, 300)},
        {CMTimeMake(largest, 1), CMTimeMake(1, 1), kCMTimePositiveInfinity},
        {CMTimeMake(-largest, 1), CMTimeMake(-2, 1), kCMTimeNegativeInfinity},
        {inEpoch(CMTimeMake(1, 2), 3), CMTimeMake(1, 2), inEpoch(CMTimeMake(2, 2), 3)},
        {inEpoch(CMTimeMake(1, 2), 3), inEpoch(CMTimeMake(1, 2), 3), CMTimeMake(2, 2)},
        {inEpoch(CMTimeMake(1, 2), 3), inEpoch(CMTimeMake(1, 2), 4), kCMTimeInvalid},
    };
    for (const auto& c : cases) {
        EXPECT_FORM(CMTimeAdd(c.a, c.b), c.sum);
        EXPECT_FORM(CMTimeAdd(c.b, c.a), c.sum);
    }
    EXPECT_FORM(CMTimeSubtract(CMTimeMake(1, 4), CMTimeMake(1, 6)), CMTimeMake(1, 12));
    EXPECT_FORM(CMTimeSubtract(kCMTimeZero, CMTimeMake(INT64_MIN, 1)), kCMTimePositiveInfinity);
}

TEST(CMTime, AddsSpecialTimesByTheirPrecedence) {
    const CMTime one = CMTimeMake(1, 1);
    const CMTime &plus = kCMTimePositiveInfinity, &minus = kCMTimeNegativeInfinity;
    const CMTime &invalid = kCMTimeInvalid, &indefinite = kCMTimeIndefinite;
    const struct {
        CMTime a, b, sum, difference;
    } cases[] = {
        {invalid, plus, invalid, invalid},
        {indefinite, invalid, invalid, invalid},
        {plus, one, plus, plus},
        {one, plus, plus, minus},
        {one, minus, minus, plus},
        {plus, plus, plus, invalid},
        {plus, minus, invalid, plus},
        {minus, minus, minus, invalid},
        {plus, indefinite, plus, plus},
        {indefinite, plus, plus, minus},
        {indefinite, one, indefinite, indefinite},
    };
    for (const auto& c : cases) {
        EXPECT_FORM(CMTimeAdd(c.a, c.b), c.sum);
        EXPECT_FORM(CMTimeSubtract(c.a, c.b), c.difference);
    }
}

TEST(CMTime, MultipliesWithoutLosingWhatFits) {
    EXPECT_FORM(CMTimeMultiply(CMTimeMake(5, 600), -3), CMTimeMake(-15, 600));
    EXPECT_FORM(CMTimeMultiply(CMTimeMake(largest, 600), 2), CMTimeMake(largest, 300));
    EXPECT_FORM(CMTimeMultiply(kCMTimeNegativeInfinity, -2), kCMTimePositiveInfinity);
    EXPECT_FORM(CMTimeMultiply(kCMTimePositiveInfinity, 0), kCMTimeInvalid);
}

TEST(CMTime, HasATotalOrder) {
    const std::vector<CMTime> ascending{
        kCMTimeNegativeInfinity,
        CMTimeMake(-1, 1),
        CMTimeMake(largest - 1, largestScale),
        CMTimeMake(largest, largestScale),
        inEpoch(CMTimeMake(-5, 1), 1),
        kCMTimeIndefinite,
        kCMTimePositiveInfinity,
        kCMTimeInvalid,
    };
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            const CMTime &a = ascending[i], &b = ascending[j];
            EXPECT_EQ(CMTimeCompare(a, b), (i > j) - (i < j)) << i << ' ' << j;
            EXPECT_FORM(CMTimeMinimum(a, b), ascending[std::min(i, j)]);
            EXPECT_FORM(CMTimeMaximum(a, b), ascending[std::max(i, j)]);
        }
    }
    EXPECT_EQ(CMTimeCompare(CMTimeMake(1, 2), CMTimeMake(300, 600)), 0);
}

TEST(CMTimeRange, IsHalfOpenAndEmptyOnlyWithoutDuration) {
    const CMTimeRange range = CMTimeRangeMake(CMTimeMake(1, 1), CMTimeMake(2, 1));
    EXPECT_TRUE(CMTIMERANGE_IS_EMPTY(CMTimeRangeMake(CMTimeMake(1, 1), CMTimeMake(0, 600))));
    EXPECT_FALSE(CMTIMERANGE_IS_EMPTY(range));
    EXPECT_FALSE(CMTIMERANGE_IS_EMPTY(kCMTimeRangeInvalid));
    EXPECT_FALSE(CMTIMERANGE_IS_VALID(CMTimeRangeMake(kCMTimeZero, inEpoch(kCMTimeZero, 1))));
    EXPECT_FALSE(CMTIMERANGE_IS_VALID(CMTimeRangeFromTimeToTime(CMTimeMake(2, 1), CMTimeMake(1, 1))));
    EXPECT_FORM(CMTimeRangeGetEnd(kCMTimeRangeInvalid), kCMTimeInvalid);
}

TEST(CMTimeRange, MapsTimesExactlyAlsoFromFarOutside) {
    const CMTimeRange clip = CMTimeRangeMake(CMTimeMake(1, 1), CMTimeMake(60060, 30000));
    const CMTimeRange squeezed = CMTimeRangeMake(CMTimeMake(3, 1), CMTimeMake(13, 10));
    const struct {
        CMTime time;
        CMTimeRange from, to;
        CMTime mapped;
    } cases[] = {
        {CMTimeMake(1, 1), clip, squeezed, CMTimeMake(3, 1)},
        {CMTimeRangeGetEnd(clip), clip, squeezed, CMTimeMake(43, 10)},
        {CMTimeMake(3001, 3000), clip, squeezed, CMTimeAdd(CMTimeMake(3, 1), CMTimeMake(13, 60060))},
        {CMTimeAdd(CMTimeMake(3, 1), CMTimeMake(1, 30)), squeezed, clip,
         CMTimeAdd(CMTimeMake(1, 1), CMTimeMake(1001, 19500))},
        {CMTimeMake(1'000'000 + 3, 1), squeezed, clip, CMTimeMake(1'540'001, 1)},
        {CMTimeMake(3 - 1'000'000, 1), squeezed, clip, CMTimeMake(-1'539'999, 1)},
        {CMTimeMake(1, 1), CMTimeRangeMake(kCMTimeZero, kCMTimeZero), clip, kCMTimeInvalid},
        {CMTimeMake(1, 1), clip, CMTimeRangeMake(kCMTimeZero, kCMTimeZero), kCMTimeInvalid},
        {kCMTimePositiveInfinity, clip, squeezed, kCMTimeInvalid},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CMTimeCompare(CMTimeMapTimeFromRangeToRange(c.time, c.from, c.to), c.mapped), 0)
            << "time " << CMTimeGetSeconds(c.time);

    // What fits no fraction comes within a nanosecond.
    const CMTimeRange odd = CMTimeRangeMake(kCMTimeZero, CMTimeMake(1'000'003, 999'983));
    const CMTimeRange hour = CMTimeRangeMake(kCMTimeZero, CMTimeMake(3'600'000'001, 1'000'003));
    const CMTime mapped = CMTimeMapTimeFromRangeToRange(CMTimeMake(1, 7), odd, hour);
    EXPECT_NEAR(CMTimeGetSeconds(mapped), 1 / 7.0 * 999'983 / 1'000'003 * 3'600'000'001 / 1'000'003, 2e-9);
}

TEST(CMTimeRange, IntersectsWithAnother) {
    const auto between = [](std::int64_t start, std::int64_t end) {
        return CMTimeRangeFromTimeToTime(CMTimeMake(start, 1), CMTimeMake(end, 1));
    };
    const CMTimeRange all = CMTimeRangeMake(kCMTimeZero, kCMTimePositiveInfinity);
    const struct {
        CMTimeRange a, b, common;
    } cases[] = {
        {between(0, 5), between(3, 8), between(3, 5)},
        {between(0, 9), between(3, 8), between(3, 8)},
        {between(0, 3), between(3, 8), kCMTimeRangeZero},
        {between(0, 1), between(3, 8), kCMTimeRangeZero},
        {all, between(0, 5), between(0, 5)},
        {all, all, all},
        {all, kCMTimeRangeInvalid, kCMTimeRangeInvalid},
    };
    for (const auto& c : cases) {
        const CMTimeRange common = CMTimeRangeGetIntersection(c.a, c.b);
        EXPECT_EQ(CMTimeCompare(common.start, c.common.start), 0);
        EXPECT_EQ(CMTimeCompare(common.duration, c.common.duration), 0);
    }
}
