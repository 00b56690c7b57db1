#include "Tests/Support/ClipTest.h"
#include "Tests/Support/MovieReader.h"

namespace anadrome::testing_support {

using ClipMakerTest = ClipTest;

TEST_F(ClipMakerTest, NumbersAreReadOnlyWhereThereIsOne) {
    const auto pictures = lumaPictures(clip("exact.mkv", {.frames = 2, .videoCodec = "ffv1"}));
    const auto size = pictures[0].samples.size();
    EXPECT_EQ(readFrameNumber(pictures[0]), 0);
    EXPECT_EQ(readFrameNumber(pictures[1]), 1);
    LumaPicture blended = pictures[0];
    LumaPicture torn = pictures[0];
    LumaPicture blank = pictures[0];
    for (std::size_t i = 0; i < size; ++i) {
        blended.samples[i] = static_cast<std::uint8_t>((pictures[0].samples[i] + pictures[1].samples[i]) / 2);
        torn.samples[i] = pictures[i < size * 6 / 10 ? 0 : 1].samples[i];
        blank.samples[i] = 126;
    }
    for (const LumaPicture& none : {blended, torn, blank})
        EXPECT_EQ(readFrameNumber(none), std::nullopt);
}

TEST_F(ClipMakerTest, EverySecondAndChannelHasAToneOfItsOwn) {
    for (const int channels : {1, 2, 6}) {
        const MovieFacts movie = readMovie(
            clip("tones.mov", {.frames = 90, .audioCodec = "pcm_s16le", .audioChannels = channels}));
        for (int second = 0; second < 3; ++second)
            for (int channel = 0; channel < channels; ++channel) {
                SCOPED_TRACE(testing::Message() << "second " << second << ", channel " << channel);
                // Not by the function that makes them.
                const double base = 300 + 100 * second;
                const double pitch = channels > 2 ? base + 50 * channel : base * (channel + 1);
                const Sound& sound = movie.sound.at(0).sound;
                EXPECT_NEAR(toneIn(sound, channel, second + 0.25, 0.5).value_or(0), pitch, 2);
                EXPECT_NEAR(level(sound, channel, second + 0.25, 0.5).value_or(0), -9.03, 0.5);
                EXPECT_FALSE(toneIn(sound, channel, 2.75, 0.5)) << "beyond the end";
            }
    }
}

TEST_F(ClipMakerTest, ReversedMoviesAreComparedMirroredInTime) {
    ClipOptions options{.frames = 100, .detail = Detail::Rich, .videoCodec = "ffv1"};
    const std::string up = clip("up.mov", options);
    options.countsDown = true;
    EXPECT_EQ(reversedPsnr(up, clip("down.mov", options)), 100);
    EXPECT_LT(reversedPsnr(up, up).value_or(100), 20);
    options.frames = 99;
    EXPECT_FALSE(reversedPsnr(up, clip("short.mov", options)));
}

} // namespace anadrome::testing_support
