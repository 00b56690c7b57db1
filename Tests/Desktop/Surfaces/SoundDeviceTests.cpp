#include "Desktop/Surfaces/SoundDevice.h"
#include "Desktop/Surfaces/SoundSamples.h"

#include "Tests/Support/Environment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace anadrome {

TEST(SoundDevice, IsNoneWithoutASoundServer) {
    const testing_support::Environment nowhere("PULSE_SERVER", "unix:/nonexistent/server");
    EXPECT_EQ(openSoundDevice(), nullptr);
}

TEST(SoundSamples, BecomeSixteenBitsAndClipInsteadOfWrappingAround) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> samples = {0,    0.5F,  -0.5F,    1,         -1,
                                        1.5F, -1.5F, infinity, -infinity, std::nanf("")};
    const std::vector<std::int16_t> expected = {0,     16384,  -16384, 32767,  -32768,
                                                32767, -32768, 32767,  -32768, 0};
    const std::vector<std::byte> bytes = sixteenBitBytes(samples);
    ASSERT_EQ(bytes.size(), 2 * samples.size());
    std::vector<std::int16_t> words(samples.size());
    std::memcpy(words.data(), bytes.data(), bytes.size());
    EXPECT_EQ(words, expected);
}

} // namespace anadrome
