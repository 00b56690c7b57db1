#include "Tests/Models/ExportTest.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

using namespace testing_support;

namespace {

using ChangeSpeedTest = ExportTest;
using Numbers = std::vector<std::optional<int>>;

constexpr double speeds[] = {0.1, 0.5, 1.0, 1.3, 2.0, 10.0};

/// Where the corners are seen: the maker draws the coded picture upright; shown, it is turned.
CornerColours shownCorners(Orientation orientation) {
    CornerColours shown{};
    for (std::size_t from = 0; from < 4; ++from) {
        const RelativePoint at =
            shownAt(orientation, {static_cast<double>(from % 2), static_cast<double>(from / 2)});
        shown[static_cast<std::size_t>(at.x + 2 * at.y)] = kUprightCorners[from];
    }
    return shown;
}

/// What is on screen at every thirtieth of a second when a clip fills so many tenths.
Numbers numbersAfter(const VideoFacts& source, std::int64_t tenths) {
    const AVRational unit{source.timeBase.num, source.timeBase.den * static_cast<int>(3 * tenths)};
    Numbers numbers;
    for (std::int64_t k = 0; k < 3 * tenths; ++k)
        numbers.push_back(numberShownAt(source, k * durationTicks(source), unit));
    return numbers;
}

} // namespace

TEST_F(ChangeSpeedTest, EveryFrameIsTheOneOnScreenAtItsSourceTime) {
    const std::pair<std::string, ClipOptions> rows[] = {
        {"24.mov", {.frames = 17, .frameRate = {24, 1}}},
        {"25.mp4", {.frames = 20, .frameRate = {25, 1}, .bFrames = 2}},
        {"2997.mov", {.frames = 60, .frameRate = {30000, 1001}}},
        {"30.mp4", {.frames = 22}},
        {"50.mov", {.frames = 29, .frameRate = {50, 1}}},
        {"60.mp4", {.frames = 45, .frameRate = {60, 1}}},
        {"uneven.mov", {.frames = 23, .frameTicks = {20, 7, 41}}},
        {"600.mov", {.frames = 22, .frameTicks = {20}}},
    };
    for (const auto& [name, options] : rows) {
        const std::string source = clip(name, options);
        const VideoFacts in = readMovie(source).video.at(0);
        ASSERT_NEAR(in.durationSeconds, videoSeconds(options), 1e-9);
        for (const double speed : speeds) {
            SCOPED_TRACE(name + " at speed " + std::to_string(speed));
            const auto outcome = changeSpeed(source, speed);
            ASSERT_TRUE(outcome->success) << outcome->message.value_or("");
            const std::int64_t tenths = std::llround(in.durationSeconds / speed * 10);
            const VideoFacts out = readMovie(outcome->path).video.at(0);
            EXPECT_EQ(out.numbers(), numbersAfter(in, tenths));
            EXPECT_NEAR(out.durationSeconds, static_cast<double>(tenths) / 10, 1e-9);
            for (std::size_t k = 0; k < out.frames.size(); ++k)
                EXPECT_NEAR(out.frames[k].seconds, static_cast<double>(k) / 30, 1e-9);
        }
    }
}

TEST_F(ChangeSpeedTest, TwiceTheSpeedIsAnOctaveHigher) {
    const std::string source = clip("tones.mov", {.frames = 90, .audioCodec = "aac"});
    for (const auto& [asked, seconds] : {std::pair(2.0, 1.5), {0.5, 6.0}, {1.0, 3.0}, {1.3, 2.3}}) {
        SCOPED_TRACE(asked);
        const auto outcome = changeSpeed(source, asked);
        ASSERT_TRUE(outcome->success);
        const MovieFacts movie = readMovie(outcome->path);
        const Sound& sound = movie.sound.at(0).sound;
        // The clip is squeezed or stretched onto the grid of tenths, and the sound with it.
        const double speed = 3.0 / seconds;
        for (int second = 0; second < 3; ++second)
            for (int channel = 0; channel < 2; ++channel)
                EXPECT_NEAR(toneIn(sound, channel, (second + 0.2) / speed, 0.6 / speed).value_or(0),
                            toneFrequency(second, channel, 2) * speed, 4 * speed)
                    << "second " << second << ", channel " << channel;
        EXPECT_NEAR(movie.video.at(0).durationSeconds, seconds, 1e-9);
        EXPECT_NEAR(movie.sound[0].startSeconds + movie.sound[0].durationSeconds, seconds, 0.01);
    }
}

TEST_F(ChangeSpeedTest, OnlyTheFirstTracksAreUsed) {
    const auto outcome = changeSpeed(clip("two.mov", {.audioCodec = "aac", .secondAudioTrack = true}), 1);
    ASSERT_TRUE(outcome->success);
    const MovieFacts movie = readMovie(outcome->path);
    ASSERT_EQ(movie.sound.size(), 1U);
    EXPECT_NEAR(toneIn(movie.sound[0].sound, 0, 0.2, 0.6).value_or(0), toneFrequency(0, 0, 2), 4);
}

TEST_F(ChangeSpeedTest, AllOrientationsComeOutUpright) {
    for (int i = 0; i < kOrientationCount; ++i) {
        SCOPED_TRACE(i);
        const auto orientation = static_cast<Orientation>(i);
        const auto outcome = changeSpeed(
            clip("turned.mov", {.width = 160, .height = 96, .frames = 3, .orientation = orientation}), 1);
        ASSERT_TRUE(outcome->success);
        const VideoFacts video = readMovie(outcome->path).video.at(0);
        const bool isTransposed = shownAt(orientation, {0, 0}).x == shownAt(orientation, {1, 0}).x;
        EXPECT_EQ(video.width, isTransposed ? 96 : 160);
        EXPECT_EQ(video.height, isTransposed ? 160 : 96);
        EXPECT_FALSE(video.displayMatrix);
        ASSERT_EQ(video.frames.size(), 3U);
        EXPECT_EQ(video.frames[2].number, 2);
        EXPECT_EQ(video.corners, shownCorners(orientation));
    }
}

TEST_F(ChangeSpeedTest, SizesFitThePresetAndAreNeverEnlarged) {
    const struct {
        const char* name;
        ClipOptions options;
        std::array<const char*, 3> sizes; ///< in the order of the qualities
    } rows[] = {
        {"4k.mp4", {.width = 3840, .height = 2160}, {"640x360", "1280x720", "1920x1080"}},
        {"portrait.mp4",
         {.width = 1920, .height = 1080, .orientation = Orientation::Rotate90},
         {"360x640", "720x1280", "1080x1920"}},
        {"full.mp4", {.width = 640, .height = 480}, {"640x480", "640x480", "640x480"}},
        {"odd.mp4",
         {.width = 321, .height = 241, .pixelFormat = "yuv444p"},
         {"320x240", "320x240", "320x240"}},
        {"anamorphic.mp4",
         {.width = 720, .height = 576, .pixelAspect = {16, 11}},
         {"640x352", "1046x576", "1046x576"}},
        {"fraction.mp4",
         {.width = 160, .height = 128, .pixelAspect = {64, 45}},
         {"228x128", "228x128", "228x128"}},
    };
    for (const auto& row : rows) {
        ClipOptions options = row.options;
        options.frames = 3;
        const std::string source = clip(row.name, options);
        for (std::size_t quality = 0; quality < row.sizes.size(); ++quality) {
            SCOPED_TRACE(std::string(row.name) + ", quality " + std::to_string(quality));
            setQuality(static_cast<std::int64_t>(quality));
            const auto outcome = changeSpeed(source, 1);
            ASSERT_TRUE(outcome->success);
            const VideoFacts video = readMovie(outcome->path).video.at(0);
            EXPECT_EQ(std::to_string(video.width) + "x" + std::to_string(video.height), row.sizes[quality]);
            EXPECT_TRUE(video.pixelAspect.num == 0 || video.pixelAspect.num == video.pixelAspect.den);
            EXPECT_EQ(video.numbers(), Numbers({0, 1, 2}));
            EXPECT_EQ(video.codecTag, "avc1");
        }
    }
}

TEST_F(ChangeSpeedTest, TheSmallestPicturesKeepTheirSize) {
    const std::string source =
        clip("tiny.mp4", {.width = 10, .height = 12, .frames = 6, .pixelFormat = "yuv444p"});
    const VideoFacts video = readMovie(changeSpeed(source, 1)->path).video.at(0);
    EXPECT_EQ(std::pair(video.width, video.height), std::pair(10, 12));
    EXPECT_EQ(video.frames.size(), 6U);
    EXPECT_EQ(video.decodeErrors, 0);
}

TEST_F(ChangeSpeedTest, ProgressRisesToOneAndThenTheCompletionComesOnce) {
    const std::string source = clip("long.mp4", {.width = 320, .height = 240, .frames = 40});
    // A long export is polled while it runs; a short one may end before the timer begins.
    for (const double speed : {0.1, 10.0}) {
        const auto log = changeSpeed(source, speed);
        EXPECT_TRUE(log->success && !log->endedByCaller);
        EXPECT_TRUE(std::ranges::is_sorted(log->progress));
        EXPECT_EQ(log->progress.back(), 1);
        const auto between = std::ranges::count_if(log->progress, [](float p) { return p > 0 && p < 0.99; });
        EXPECT_TRUE(between > 0 || speed > 1);
        // What the main queue still holds is a first report at most; the timer doesn't go on.
        runEventLoopFor(std::chrono::milliseconds(30));
        const std::size_t reports = log->progress.size();
        runEventLoopFor(std::chrono::milliseconds(100));
        EXPECT_EQ(log->progress.size(), reports);
        EXPECT_EQ(log->completions, 1);
    }
}

} // namespace anadrome
