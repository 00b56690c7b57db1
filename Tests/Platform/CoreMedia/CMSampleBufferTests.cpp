#include "Platform/CoreMedia/CMSampleBuffer.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace anadrome;

namespace {

constexpr CMSampleTimingInfo noTiming{};

CMFormatDescriptionRef stereo() {
    CMFormatDescription description;
    description.mediaType = CMMediaType::audio;
    description.mediaSubType = fourCC("lpcm");
    description.audio = {44100, fourCC("lpcm"), 2, 16, 4};
    return std::make_shared<const CMFormatDescription>(description);
}

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

TEST(CMSampleBuffer, WritesItsTimingOnlyWhereThereIsRoomForAll) {
    const auto buffer =
        samples(2, {at(CMTimeMake(1, 1), kCMTimeInvalid), at(CMTimeMake(2, 1), kCMTimeInvalid)});
    CMSampleTimingInfo array[2];
    std::size_t needed = 0;
    for (const std::size_t capacity : {0, 1}) {
        EXPECT_EQ(CMSampleBufferGetSampleTimingInfoArray(buffer, capacity, array, &needed), -12737);
        EXPECT_EQ(std::exchange(needed, 0), 2u);
        EXPECT_TRUE(CMTIME_IS_INVALID(array[0].presentationTimeStamp));
    }
    EXPECT_EQ(CMSampleBufferGetSampleTimingInfoArray(buffer, 0, nullptr, &needed), 0);
    EXPECT_EQ(needed, 2u);
    EXPECT_EQ(CMSampleBufferGetSampleTimingInfoArray(buffer, 2, array, nullptr), 0);
    EXPECT_PRED2(isTime, array[1].presentationTimeStamp, CMTimeMake(2, 1));
    EXPECT_EQ(CMSampleBufferGetSampleTimingInfoArray(samples(2, {}), 2, array, &needed), -12736);
    EXPECT_EQ(needed, 0u);
    EXPECT_EQ(CMSampleBufferGetSampleTimingInfoArray(nullptr, 2, array, &needed), -12731);
}

TEST(CMSampleBuffer, GivesOutItsSoundInPlaceAndAligned) {
    const auto data = std::make_shared<CMBlockBuffer>(1000);
    CMSampleBufferRef buffer;
    ASSERT_EQ(CMSampleBufferCreate(data, stereo(), 250, {}, {}, &buffer), 0);
    AudioBufferList list;
    CMBlockBufferRef retained;
    ASSERT_EQ(CMSampleBufferGetAudioBufferListWithRetainedBlockBuffer(buffer, &list, &retained), 0);
    EXPECT_EQ(retained, data);
    EXPECT_EQ(list.mNumberBuffers, 1u);
    EXPECT_EQ(list.mBuffers[0].mNumberChannels, 2u);
    EXPECT_EQ(list.mBuffers[0].mDataByteSize, 1000u);
    EXPECT_EQ(list.mBuffers[0].mData, data->bytes().data());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(list.mBuffers[0].mData) % 16, 0u);

    CMSampleBufferRef empty;
    ASSERT_EQ(CMSampleBufferCreate(nullptr, stereo(), 0, {}, {}, &empty), 0);
    for (const auto& silent : {empty, samples(1, {}), CMSampleBufferRef()}) {
        EXPECT_NE(CMSampleBufferGetAudioBufferListWithRetainedBlockBuffer(silent, &list, &retained), 0);
        EXPECT_EQ(list.mBuffers[0].mData, nullptr);
        EXPECT_EQ(retained, nullptr);
    }
}

TEST(CMSampleBuffer, HoldsAPictureOnlyUnderADescriptionOfVideo) {
    CVPixelBufferRef picture;
    ASSERT_EQ(CVPixelBufferCreate(4, 4, kCVPixelFormatType_32BGRA, {}, &picture), 0);
    const auto video = std::make_shared<const CMFormatDescription>();
    CMSampleBufferRef buffer;
    EXPECT_EQ(CMSampleBufferCreateForImageBuffer(picture, stereo(), noTiming, &buffer), -12743);
    EXPECT_EQ(CMSampleBufferCreateForImageBuffer(picture, nullptr, noTiming, &buffer), -12731);
    EXPECT_EQ(CMSampleBufferCreateForImageBuffer(nullptr, video, noTiming, &buffer), -12731);
    EXPECT_EQ(buffer, nullptr);
    EXPECT_EQ(CMSampleBufferCreateForImageBuffer(picture, video, at(kCMTimeZero, kCMTimeInvalid), &buffer),
              0);
    EXPECT_EQ(CMSampleBufferGetImageBuffer(buffer), picture);
    EXPECT_EQ(CMSampleBufferGetDataBuffer(buffer), nullptr);
    EXPECT_EQ(CMSampleBufferGetNumSamples(buffer), 1);
}

TEST(CMBlockBuffer, ReplacesBytesOnlyInsideItself) {
    const auto buffer = std::make_shared<CMBlockBuffer>(8);
    std::ranges::fill(buffer->bytes(), std::byte{1});
    const std::byte twos[8] = {std::byte{2}, std::byte{2}, std::byte{2}};
    EXPECT_EQ(CMBlockBufferReplaceDataBytes(twos, buffer, 9, 0), -12703);
    EXPECT_EQ(CMBlockBufferReplaceDataBytes(twos, buffer, 6, 3), -12704);
    EXPECT_EQ(CMBlockBufferReplaceDataBytes(twos, buffer, 1, SIZE_MAX), -12704);
    EXPECT_EQ(CMBlockBufferReplaceDataBytes(nullptr, buffer, 0, 1), -12705);
    EXPECT_EQ(CMBlockBufferReplaceDataBytes(twos, nullptr, 0, 1), -12705);
    EXPECT_EQ(std::ranges::count(buffer->bytes(), std::byte{1}), 8);
    EXPECT_EQ(CMBlockBufferReplaceDataBytes(twos, buffer, 5, 3), 0);
    EXPECT_EQ(std::ranges::count(buffer->bytes().last(3), std::byte{2}), 3);
    EXPECT_EQ(std::ranges::count(buffer->bytes(), std::byte{1}), 5);
}
