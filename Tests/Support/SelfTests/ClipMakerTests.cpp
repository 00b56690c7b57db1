#include "Tests/Support/ClipTest.h"
#include "Tests/Support/MovieFile.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ReversedPsnr.h"
#include "Tests/Support/ToneTrack.h"

#include <numeric>

namespace anadrome::testing_support {
namespace {

std::vector<std::optional<int>> countingUp(int count) {
    std::vector<std::optional<int>> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

constexpr int width = 96;
constexpr int height = 64;
using Pixels = std::vector<std::uint8_t>; ///< of a picture of that size, or of one on its side

class ClipMakerTest : public ClipTest {
protected:
    MovieFacts made(const std::string& name, const ClipOptions& options) const {
        return readMovie(clip(name, options));
    }

    /// The luma of so many pictures, without a loss.
    std::vector<Pixels> pictures(int frames) const {
        std::vector<Pixels> pictures;
        const ClipOptions options{.width = width, .height = height, .frames = frames, .videoCodec = "ffv1"};
        forEachVideoFrame(clip("exact.mkv", options), [&](const AVFrame& frame, double) {
            Pixels& pixels = pictures.emplace_back();
            for (int y = 0; y < height; ++y)
                pixels.insert(pixels.end(), frame.data[0] + y * frame.linesize[0],
                              frame.data[0] + y * frame.linesize[0] + width);
        });
        return pictures;
    }
};

LumaView viewOf(const Pixels& pixels) {
    return {pixels.data(), width, width, height};
}

TEST_F(ClipMakerTest, WritesNumbersThatCanBeReadAtEverySizeQualityAndFormat) {
    const struct {
        const char* file;
        ClipOptions options;
    } rows[] = {
        {"small.mp4", {.width = 64, .height = 48, .quality = 45}},
        {"odd.mp4", {.width = 65, .height = 49, .pixelFormat = "yuv444p"}},
        {"upended.mp4", {.width = 64, .height = 114, .quality = 40}},
        {"rich.mp4", {.width = 640, .height = 360, .detail = Detail::Rich, .bFrames = 2, .quality = 40}},
        {"large.mp4", {.width = 3840, .height = 2160, .frames = 3, .quality = 45}},
        {"hlg.mov",
         {.videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = ColourPreset::Hlg, .bFrames = 2}},
        {"pq.mov", {.videoCodec = "prores_ks", .pixelFormat = "yuv422p10le", .colour = ColourPreset::Pq}},
        {"fields.mp4", {.interlaced = true}},
        {"open.mkv", {.gop = 10, .bFrames = 3, .openGop = true}},
        {"pieces.mp4", {.bFrames = 2, .fragmented = true}},
        {"old.avi", {.videoCodec = "mpeg4", .quality = 20}},
        {"stills.mov", {.videoCodec = "mjpeg", .pixelFormat = "yuvj420p"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        const VideoFacts video = made(row.file, row.options).video.at(0);
        EXPECT_EQ(video.numbers(), countingUp(row.options.frames));
        EXPECT_EQ(video.corners, kUprightCorners);
        EXPECT_EQ(video.width, row.options.width);
        EXPECT_EQ(video.decodeErrors, 0);
        EXPECT_EQ(video.isInterlaced, row.options.interlaced);
    }
}

TEST_F(ClipMakerTest, NumbersAreReadHoweverThePictureIsTurnedAndOnlyWhereThereIsOne) {
    const std::vector<Pixels> coded = pictures(6);
    for (int index = 0; index < kOrientationCount; ++index) {
        SCOPED_TRACE(index);
        const auto orientation = static_cast<Orientation>(index);
        const bool sideways = shownAt(orientation, {0, 0}).x == shownAt(orientation, {1, 0}).x;
        const int shownWidth = sideways ? height : width;
        const int shownHeight = sideways ? width : height;
        Pixels shown(coded[5].size());
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const RelativePoint at = shownAt(orientation, {(x + 0.5) / width, (y + 0.5) / height});
                const int pixel =
                    static_cast<int>(at.y * shownHeight) * shownWidth + static_cast<int>(at.x * shownWidth);
                shown[static_cast<std::size_t>(pixel)] = coded[5][static_cast<std::size_t>(y * width + x)];
            }
        EXPECT_EQ(readFrameNumber({shown.data(), shownWidth, shownWidth, shownHeight}), 5);
    }

    Pixels blended = coded[0];
    for (std::size_t i = 0; i < blended.size(); ++i)
        blended[i] = static_cast<std::uint8_t>((coded[0][i] + coded[1][i]) / 2);
    Pixels torn = coded[0];
    std::copy(coded[1].begin() + width * height * 6 / 10, coded[1].end(),
              torn.begin() + width * height * 6 / 10);
    const Pixels blank(coded[0].size(), 126);
    for (const Pixels& none : {blended, torn, blank})
        EXPECT_EQ(readFrameNumber(viewOf(none)), std::nullopt);
}

TEST_F(ClipMakerTest, TagsTheColoursAndKeepsTheLevelsOfEitherRange) {
    const struct {
        const char* name;
        ClipOptions options;
        const char* tags;
    } rows[] = {
        {"hlg.mov",
         {.frames = 1, .videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = ColourPreset::Hlg},
         "bt2020 arib-std-b67 bt2020nc tv hvc1"},
        {"untagged.mov",
         {.frames = 1, .colour = ColourPreset::Untagged},
         "unknown unknown unknown unknown avc1"},
        {"limited.mp4",
         {.frames = 1, .colour = ColourPreset::Bt601},
         "smpte170m smpte170m smpte170m tv avc1"},
        {"full.mp4",
         {.frames = 1, .colour = ColourPreset::Bt601, .fullRange = true},
         "smpte170m smpte170m smpte170m pc avc1"},
    };
    std::vector<double> lumas;
    for (const auto& row : rows) {
        const VideoFacts video = made(row.name, row.options).video.at(0);
        EXPECT_EQ(video.primaries + " " + video.transfer + " " + video.matrix + " " + video.range + " " +
                      video.codecTag,
                  row.tags);
        lumas.push_back(video.frames.at(0).meanLuma);
    }
    EXPECT_NEAR(lumas[2], lumas[3], 0.5);
}

TEST_F(ClipMakerTest, SoundsTheToneOfEverySecondOnEveryChannel) {
    const struct {
        const char* file;
        const char* codec;
        int rate;
        int channels;
    } rows[] = {{"stereo.mp4", "aac", 48000, 2},
                {"mono.mov", "pcm_s16be", 44100, 1},
                {"six.mov", "pcm_s16le", 48000, 6}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file);
        const SoundFacts facts =
            made(
                row.file,
                {.frames = 90, .audioCodec = row.codec, .audioRate = row.rate, .audioChannels = row.channels})
                .sound.at(0);
        EXPECT_EQ(facts.sound.sampleRate, row.rate);
        EXPECT_EQ(facts.sound.channelCount, row.channels);
        EXPECT_NEAR(facts.sound.seconds(), 3, 0.03);
        EXPECT_LT(facts.worstSlip, 0.001);
        for (int second = 0; second < 3; ++second)
            for (int channel = 0; channel < row.channels; ++channel) {
                SCOPED_TRACE(testing::Message() << "second " << second << ", channel " << channel);
                // Not by the function that makes them.
                const double base = 300 + 100 * second;
                const double pitch = row.channels > 2 ? base + 50 * channel : base * (channel + 1);
                EXPECT_NEAR(toneIn(facts.sound, channel, second + 0.25, 0.5).value_or(0), pitch, 2);
                EXPECT_NEAR(level(facts.sound, channel, second + 0.25, 0.5).value_or(0), -9.03, 0.5);
            }
    }
}

TEST_F(ClipMakerTest, ReversedMoviesAreComparedMirroredInTime) {
    const ClipOptions options{.frames = 100, .detail = Detail::Rich, .videoCodec = "ffv1"};
    ClipOptions exactDown = options;
    exactDown.countsDown = true;
    ClipOptions codedDown = exactDown;
    codedDown.videoCodec = "libx264";
    const std::string up = clip("up.mov", options);
    EXPECT_EQ(reversedPsnr(up, clip("down.mov", exactDown)), 100);
    EXPECT_LT(reversedPsnr(up, up).value_or(100), 20);
    EXPECT_NEAR(reversedPsnr(up, clip("down.mp4", codedDown)).value_or(0), 45, 15);
    exactDown.frames = 99;
    EXPECT_FALSE(reversedPsnr(up, clip("short.mov", exactDown)));
}

} // namespace
} // namespace anadrome::testing_support
