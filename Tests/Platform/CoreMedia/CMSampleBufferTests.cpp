#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <gtest/gtest.h>

using namespace anadrome;

namespace {

constexpr CMSampleTimingInfo noTiming{};

CMSampleTimingInfo at(const CMTime& time, const CMTime& duration) {
    return {duration, time, kCMTimeInvalid};
}

CMSampleBufferRef samples(std::int64_t count, std::vector<CMSampleTimingInfo> timings) {
    CMSampleBufferRef buffer;
    EXPECT_EQ(CMSampleBufferCreate(nullptr, nullptr, count, timings, {}, &buffer), 0);
    return buffer;
}

bool isTime(const CMTime& time, const CMTime& expected) {
    return CMTimeCompare(time, expected) == 0;
}

} // namespace

TEST(CMSampleBuffer, TakesNoneOneOrAsManyEntriesAsSamples) {
    const struct {
        std::int64_t samples;
        std::size_t timings, sizes;
        OSStatus status;
    } cases[] = {{3, 0, 0, 0},      {3, 1, 1, 0},      {3, 3, 3, 0},      {0, 0, 0, 0},      {0, 1, 0, 0},
                 {3, 2, 0, -12738}, {3, 0, 4, -12738}, {1, 2, 0, -12738}, {-1, 0, 0, -12738}};
    for (const auto& c : cases) {
        const std::vector<CMSampleTimingInfo> timings(c.timings);
        const std::vector<std::size_t> sizes(c.sizes);
        CMSampleBufferRef buffer;
        EXPECT_EQ(CMSampleBufferCreate(nullptr, nullptr, c.samples, timings, sizes, &buffer), c.status);
        EXPECT_EQ(buffer != nullptr, c.status == 0);
        EXPECT_EQ(CMSampleBufferGetNumSamples(buffer), c.status == 0 ? c.samples : 0);
    }
    EXPECT_EQ(CMSampleBufferCreate(nullptr, nullptr, 0, {}, {}, nullptr), -12731);
}

TEST(CMSampleBuffer, StartsWithItsEarliestSampleAndLastsAsLongAsAllTogether) {
    const CMTime tick = CMTimeMake(1, 44100);
    const CMTime third = CMTimeMake(1, 3);
    const auto one = samples(1024, {at(CMTimeMake(5, 1), tick)});
    EXPECT_PRED2(isTime, CMSampleBufferGetPresentationTimeStamp(one), CMTimeMake(5, 1));
    EXPECT_PRED2(isTime, CMSampleBufferGetDuration(one), CMTimeMake(1024, 44100));

    const auto each =
        samples(3, {at(CMTimeMake(2, 1), third), at(kCMTimeInvalid, third), at(CMTimeMake(1, 1), tick)});
    EXPECT_PRED2(isTime, CMSampleBufferGetPresentationTimeStamp(each), CMTimeMake(1, 1));
    EXPECT_PRED2(isTime, CMSampleBufferGetDuration(each), CMTimeAdd(CMTimeMake(2, 3), tick));

    for (const auto& untimed : {samples(2, {}), samples(2, {noTiming}), CMSampleBufferRef()}) {
        EXPECT_TRUE(CMTIME_IS_INVALID(CMSampleBufferGetPresentationTimeStamp(untimed)));
        EXPECT_TRUE(CMTIME_IS_INVALID(CMSampleBufferGetDuration(untimed)));
    }
    EXPECT_TRUE(CMTIME_IS_INVALID(CMSampleBufferGetDuration(samples(2, {at(kCMTimeZero, third), noTiming}))));
}
