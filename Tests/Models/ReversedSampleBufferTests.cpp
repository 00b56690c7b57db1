#include "Models/ReversedSampleBuffer.h"

#include <cstring>
#include <gtest/gtest.h>

namespace anadrome {

namespace {

CMSampleBufferRef soundOf(const std::vector<std::uint8_t>& bytes, std::int64_t samples,
                          std::span<const CMSampleTimingInfo> timings = {}) {
    auto block = std::make_shared<CMBlockBuffer>(bytes.size());
    std::memcpy(block->bytes().data(), bytes.data(), bytes.size());
    CMFormatDescription format;
    format.mediaType = CMMediaType::audio;
    format.audio = {44100, fourCC("lpcm"), 2, 16, 4};
    CMSampleBufferRef buffer;
    CMSampleBufferCreate(block, std::make_shared<const CMFormatDescription>(format), samples, timings, {},
                         &buffer);
    return buffer;
}

std::vector<std::uint8_t> bytesOf(const CMSampleBufferRef& buffer) {
    const auto bytes = CMSampleBufferGetDataBuffer(buffer)->bytes();
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return {data, data + bytes.size()};
}

} // namespace

TEST(ReversedSampleBuffer, ReversesWordsAndSoSwapsTheChannels) {
    const struct {
        std::vector<std::uint8_t> in, out;
        std::int64_t samples;
    } rows[] = {
        // Left 0, right 0, left 1, right 1 becomes right 1, left 1, right 0, left 0.
        {{1, 0, 2, 0, 3, 0, 4, 0}, {4, 0, 3, 0, 2, 0, 1, 0}, 2},
        {{1, 2}, {1, 2}, 1},
        {{1, 2, 3, 4, 5}, {3, 4, 1, 2, 5}, 1},
    };
    for (const auto& row : rows) {
        const CMSampleTimingInfo invalid;
        const CMSampleBufferRef reversed = reversedSampleBuffer(soundOf(row.in, row.samples), {&invalid, 1});
        ASSERT_TRUE(reversed);
        EXPECT_EQ(bytesOf(reversed), row.out);
        EXPECT_EQ(CMSampleBufferGetNumSamples(reversed), row.samples);
        EXPECT_TRUE(CMTIME_IS_INVALID(CMSampleBufferGetPresentationTimeStamp(reversed)));
    }
}

TEST(ReversedSampleBuffer, GivesTheBufferBackWhenTheTimingDoesNotFit) {
    const CMSampleTimingInfo own{CMTimeMake(1, 44100), CMTimeMake(7, 1), kCMTimeInvalid};
    const CMSampleBufferRef buffer = soundOf({1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0}, 3, {&own, 1});
    const std::vector<CMSampleTimingInfo> two(2);
    const CMSampleBufferRef result = reversedSampleBuffer(buffer, two);
    EXPECT_EQ(result, buffer);
    EXPECT_EQ(CMTimeGetSeconds(CMSampleBufferGetPresentationTimeStamp(result)), 7);
}

TEST(ReversedSampleBuffer, ABufferWithoutSoundGivesNothing) {
    CMSampleBufferRef empty;
    CMSampleBufferCreate(nullptr, nullptr, 0, {}, {}, &empty);
    const CMSampleTimingInfo invalid;
    EXPECT_FALSE(reversedSampleBuffer(empty, {&invalid, 1}));
}

} // namespace anadrome
