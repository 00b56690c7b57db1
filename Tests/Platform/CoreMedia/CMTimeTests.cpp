#include "Platform/CoreMedia/CMTimeRange.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using namespace anadrome;

namespace {

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
        {1e18, 600, CMTimeMake(9000000000000000000, 9)},
        {1e19, 600, kCMTimePositiveInfinity},
        {-1e19, 600, kCMTimeNegativeInfinity},
        {std::nan(""), 600, kCMTimeInvalid},
        {1, 0, kCMTimeInvalid},
    };
    for (const auto& c : cases)
        EXPECT_FORM(CMTimeMakeWithSeconds(c.seconds, c.timescale), c.time);
    EXPECT_FORM(CMTimeMake(1, 0), kCMTimeInvalid);
}

TEST(CMTime, ChangesScaleByEachRoundingMethod) {
    using enum CMTimeRoundingMethod;
    const struct {
        CMTimeRoundingMethod method;
        std::int64_t values[4];
    } cases[] = {
        {RoundHalfAwayFromZero, {3, -3, 2, -2}},       {RoundTowardZero, {2, -2, 2, -2}},
        {RoundAwayFromZero, {3, -3, 3, -3}},           {QuickTime, {2, -2, 2, -2}},
        {RoundTowardPositiveInfinity, {3, -2, 3, -2}}, {RoundTowardNegativeInfinity, {2, -3, 2, -3}},
    };
    const CMTime times[] = {CMTimeMake(5, 2), CMTimeMake(-5, 2), CMTimeMake(7, 3), CMTimeMake(-7, 3)};
    for (const auto& c : cases)
        for (std::size_t i = 0; i < std::size(times); ++i)
            EXPECT_FORM(CMTimeConvertScale(times[i], 1, c.method), rounded(c.values[i], 1));
    EXPECT_FORM(CMTimeConvertScale(CMTimeMake(-1, 3), 10, QuickTime), rounded(-4, 10));
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
        {CMTimeMake(1, 1), CMTimeRangeMake(kCMTimeZero, kCMTimeZero), clip, kCMTimeInvalid},
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
