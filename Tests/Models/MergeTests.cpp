#include "Tests/Models/ExportTest.h"
#include "Tests/Support/LumaPicture.h"
#include "Tests/Support/MovieBoxes.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

using namespace testing_support;

namespace {

using MergeTest = ExportTest;
using Numbers = std::vector<std::optional<int>>;

/// What is on screen at every thirtieth of a second when one clip follows the other.
Numbers joinedNumbers(const VideoFacts& first, const VideoFacts& second) {
    const std::int64_t end = durationTicks(first);
    // Thirtieths and the first clip's ticks are whole in this unit.
    const AVRational unit{first.timeBase.num, first.timeBase.den * 30};
    const auto count = std::llround(30 * (first.durationSeconds + second.durationSeconds));
    Numbers numbers;
    for (std::int64_t k = 0; k < count; ++k) {
        const std::int64_t time = k * first.timeBase.den / first.timeBase.num;
        numbers.push_back(time < 30 * end ? numberShownAt(first, time, unit)
                                          : numberShownAt(second, time - 30 * end, unit));
    }
    return numbers;
}

} // namespace

TEST_F(MergeTest, TheCutFallsOnTheExactFrame) {
    const struct {
        const char* what;
        ClipOptions first;
        ClipOptions second;
    } rows[] = {
        {"thirty", {.frames = 20}, {.frames = 30}},
        {"off the grid",
         {.frames = 17, .frameRate = {25, 1}},
         {.frames = 13, .frameRate = {24, 1}, .bFrames = 2}},
        {"ntsc", {.frames = 30, .frameRate = {30000, 1001}}, {.frames = 30, .frameRate = {30000, 1001}}},
        {"uneven", {.frames = 11, .frameTicks = {20, 7, 41}}, {.frames = 30, .frameRate = {60, 1}}},
        {"short", {.frames = 1}, {.frames = 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        ClipOptions countingDown = row.second;
        countingDown.countsDown = true;
        const std::string first = clip("first.mov", row.first);
        const std::string second = clip("second.mov", countingDown);
        const auto outcome = merge(first, second);
        ASSERT_TRUE(outcome->success) << outcome->message.value_or("");
        const VideoFacts out = readMovie(outcome->path).video.at(0);
        EXPECT_EQ(out.numbers(), joinedNumbers(readMovie(first).video.at(0), readMovie(second).video.at(0)));
        EXPECT_NEAR(out.durationSeconds, static_cast<double>(out.frames.size()) / 30, 1e-9);
        const auto boxes = outermostBoxes(outcome->path);
        EXPECT_LT(std::ranges::find(boxes, "moov"), std::ranges::find(boxes, "mdat"));
    }
}

TEST_F(MergeTest, EachClipIsHeardInItsOwnStretch) {
    for (const bool firstSounds : {false, true})
        for (const bool secondSounds : {false, true}) {
            SCOPED_TRACE(std::string(firstSounds ? "sound" : "silence") + ", " +
                         (secondSounds ? "sound" : "silence"));
            const ClipOptions first{.frames = 60, .audioCodec = firstSounds ? "aac" : ""};
            const ClipOptions second{
                .frames = 40, .audioCodec = secondSounds ? "pcm_s16le" : "", .audioRate = 44100};
            const auto outcome = merge(clip("first.mov", first), clip("second.mov", second));
            ASSERT_TRUE(outcome->success) << outcome->message.value_or("");
            const MovieFacts movie = readMovie(outcome->path);
            EXPECT_NEAR(movie.video.at(0).durationSeconds, 100 / 30.0, 1e-9);
            ASSERT_EQ(movie.sound.size(), firstSounds || secondSounds ? 1U : 0U);
            if (movie.sound.empty())
                continue;
            const Sound& sound = movie.sound[0].sound;
            EXPECT_NEAR(sound.firstSampleSeconds, 0, 0.001);
            EXPECT_NEAR(movie.sound[0].durationSeconds, 100 / 30.0, 0.01);
            const struct {
                double from;
                double length;
                bool sounds;
                int second;
            } stretches[] = {
                {0.2, 0.6, firstSounds, 0},   {1.2, 0.6, firstSounds, 1},  {1.87, 0.1, firstSounds, 1},
                {2.03, 0.1, secondSounds, 0}, {2.2, 0.6, secondSounds, 0},
            };
            for (const auto& stretch : stretches) {
                SCOPED_TRACE(stretch.from);
                if (stretch.sounds) {
                    EXPECT_NEAR(toneIn(sound, 0, stretch.from, stretch.length).value_or(0),
                                toneFrequency(stretch.second, 0, 2), 12);
                    EXPECT_NEAR(level(sound, 0, stretch.from, stretch.length).value_or(-200), -9, 2);
                } else {
                    EXPECT_LT(level(sound, 0, stretch.from, stretch.length).value_or(0), -70);
                }
            }
        }
}

TEST_F(MergeTest, TheSecondClipIsPlacedAsItComes) {
    const std::string first = clip("first.mov", {.width = 160, .height = 120, .frames = 6});
    const std::string smaller = clip("smaller.mov", {.width = 80, .height = 60, .frames = 6});
    const std::string larger = clip("larger.mov", {.width = 320, .height = 240, .frames = 6});

    std::vector<LumaPicture> pictures = lumaPictures(merge(first, smaller)->path);
    ASSERT_EQ(pictures.size(), 12U);
    EXPECT_EQ(readFrameNumber(pictures[5]), 5);
    const LumaPicture& picture = pictures[9];
    EXPECT_EQ(readFrameNumber(picture.topLeft(80, 60)), 3);
    for (const auto& [x, y] : {std::pair(90, 10), std::pair(10, 70), std::pair(155, 115)})
        EXPECT_NEAR(picture.at(x, y), 16, 3) << x << ", " << y << " is black";

    pictures = lumaPictures(merge(first, larger)->path);
    ASSERT_EQ(pictures.size(), 12U);
    ASSERT_EQ(pictures[9].width, 160);
    EXPECT_LT(meanDifference(pictures[9], lumaPictures(larger)[3].topLeft(160, 120)), 2);
}

TEST_F(MergeTest, TheFirstClipsTransformTurnsTheCanvasAndNotThePicture) {
    const std::string turned =
        clip("turned.mov", {.width = 160, .height = 96, .frames = 3, .orientation = Orientation::Rotate90});
    const auto outcome = merge(turned, turned);
    ASSERT_TRUE(outcome->success);
    const VideoFacts video = readMovie(outcome->path).video.at(0);
    EXPECT_EQ(std::pair(video.width, video.height), std::pair(96, 160));
    EXPECT_FALSE(video.displayMatrix);
    EXPECT_EQ(video.corners[0], CornerColour::Red);
    EXPECT_NEAR(lumaPictures(outcome->path).at(0).at(48, 130), 16, 3) << "below it is black";
}

} // namespace anadrome
