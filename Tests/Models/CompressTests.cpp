#include "Platform/AVFoundation/AVAsset.h"
#include "Tests/Models/ExportTest.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <algorithm>

namespace anadrome {

using namespace testing_support;

namespace {

using CompressTest = ExportTest;

std::vector<AVMetadataItem> metadataOf(const std::string& path) {
    return AVURLAsset(URL::fileURLWithPath(path)).metadata();
}

} // namespace

TEST_F(CompressTest, TheMetadataOfTheSourceIsOnTheResultInBothContainers) {
    const std::string plain = clip("plain.mov", {.frames = 5});
    const std::string source =
        clip("source.mov", {.frames = 3,
                            .keyedMetadata = true,
                            .metadata = {{"com.apple.quicktime.model", "Camera 5"},
                                         {"com.apple.quicktime.location.ISO6709", "+48.2082+016.3738/"}}});
    ASSERT_GE(metadataOf(source).size(), 2U);
    for (const char* extension : {".mov", ".mp4"}) {
        SCOPED_TRACE(extension);
        const auto carried = compress(source, plain, newPath(extension));
        ASSERT_TRUE(carried->success) << carried->message.value_or("");
        const auto items = metadataOf(carried->path);
        for (const AVMetadataItem& item : metadataOf(source))
            EXPECT_TRUE(std::ranges::find(items, item) != items.end()) << item.key();
        EXPECT_EQ(readMovie(carried->path).video.at(0).frames.size(), 5U);

        // A source without any leaves the movie without its own.
        const auto bare = compress(plain, source, newPath(extension));
        ASSERT_TRUE(bare->success);
        EXPECT_EQ(metadataOf(bare->path), metadataOf(plain));
    }
}

TEST_F(CompressTest, EveryOrientationIsShownAsBefore) {
    for (int i = 0; i < kOrientationCount; ++i)
        for (const auto& [quality, width, height] :
             {std::tuple(1, 160, 96), std::tuple(0, 160, 96), std::tuple(0, 800, 480)}) {
            SCOPED_TRACE(std::to_string(i) + ", " + std::to_string(width));
            const auto orientation = static_cast<Orientation>(i);
            const std::string source = clip(
                "turned.mov", {.width = width, .height = height, .frames = 2, .orientation = orientation});
            setQuality(quality);
            const auto outcome = compress(source, source);
            ASSERT_TRUE(outcome->success);
            const VideoFacts video = readMovie(outcome->path).video.at(0);
            EXPECT_EQ(std::pair(video.width, video.height),
                      width == 800 ? std::pair(640, 384) : std::pair(160, 96));
            EXPECT_EQ(video.corners, kUprightCorners);
            EXPECT_EQ(video.displayMatrix,
                      orientation == Orientation::Upright
                          ? std::nullopt
                          : std::optional(displayMatrix(orientation, video.width, video.height)));
        }
}

TEST_F(CompressTest, FramesKeepTheirTimesToTheTickAndSoundItsPlace) {
    const std::pair<std::string, ClipOptions> rows[] = {
        {"uneven.mov", {.frames = 24, .frameTicks = {20, 7, 41}}},
        {"ntsc.mp4", {.frames = 30, .frameRate = {30000, 1001}, .bFrames = 2}},
        {"high.mov", {.frames = 30, .frameRate = {60, 1}, .audioCodec = "aac"}},
        {"late.mov", {.frames = 9, .startSeconds = 2, .audioCodec = "pcm_s16le"}},
    };
    for (const auto& [name, options] : rows) {
        SCOPED_TRACE(name);
        const std::string source = clip(name, options);
        const auto outcome = compress(source, source);
        ASSERT_TRUE(outcome->success) << outcome->message.value_or("");
        const MovieFacts in = readMovie(source);
        const MovieFacts out = readMovie(outcome->path);
        const VideoFacts& before = in.video.at(0);
        const VideoFacts& after = out.video.at(0);
        ASSERT_EQ(after.numbers(), before.numbers());
        for (std::size_t i = 0; i < after.frames.size(); ++i)
            EXPECT_NEAR(after.frames[i].seconds, before.frames[i].seconds, 1e-9) << i;
        EXPECT_NEAR(after.durationSeconds, before.durationSeconds, 1e-9);
        for (std::size_t i = 0; i < in.sound.size(); ++i) {
            const SoundFacts& track = out.sound.at(i);
            EXPECT_NEAR(track.startSeconds + track.durationSeconds,
                        after.startSeconds + after.durationSeconds, 0.01);
            EXPECT_NEAR(toneIn(track.sound, 0, after.startSeconds + 0.05, 0.2).value_or(0),
                        toneFrequency(0, 0, 2), 8);
        }
    }
}

} // namespace anadrome
