#include "Tests/Platform/AVFoundation/MediaTest.h"

#include <fstream>

namespace anadrome {

using namespace testing_support;

using AssetTest = MediaTest;

TEST_F(AssetTest, ReadsRatesAndDurationsOfEveryContainer) {
    const struct {
        const char* name;
        ClipOptions options;
        double start;
        double duration;
        float rate;
    } rows[] = {
        {"plain.mp4", {.frames = 48, .frameRate = {24, 1}, .bFrames = 2}, 0, 2, 24},
        {"ntsc.mov", {.frames = 60, .frameRate = {30000, 1001}}, 0, 2.002, 29.97F},
        {"fragmented.mp4", {.frames = 60, .audioCodec = "aac", .fragmented = true}, 0, 2, 30},
        {"late.mp4", {.frames = 30, .startSeconds = 5}, 5, 1, 30},
        {"one.mp4", {.frames = 1}, 0, 1 / 30.0, 30},
        {"matroska.mkv", {.frames = 50, .frameRate = {25, 1}}, 0, 2, 25},
        {"broadcast.ts", {.frames = 50, .frameRate = {25, 1}}, 0, 2, 25},
        {"uneven.mp4", {.frames = 40, .frameTicks = {10, 50}}, 0, 2, 20},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto asset = makeAsset(row.name, row.options);
        const auto tracks = asset->tracksWithMediaType(AVMediaTypeVideo);
        ASSERT_EQ(tracks.size(), 1U);
        const AVAssetTrack& track = *tracks.front();
        EXPECT_NEAR(CMTimeGetSeconds(track.timeRange().start), row.start, 0.005);
        EXPECT_NEAR(CMTimeGetSeconds(track.timeRange().duration), row.duration, 0.05);
        EXPECT_NEAR(track.nominalFrameRate(), row.rate, row.rate * 0.03F);
        EXPECT_EQ(track.sampleCount(), row.options.frames);
        EXPECT_GT(track.estimatedDataRate(), 0);
        EXPECT_GE(CMTimeGetSeconds(asset->duration()), row.start + row.duration - 0.05);
    }
}

TEST_F(AssetTest, AFileThatCannotBeReadHasNoTracksAndSaysWhy) {
    std::ofstream(path("empty.mp4"));
    std::ofstream(path("text.mp4")) << "this is no movie\n";
    std::ofstream(path("list.mp4")) << "#EXTM3U\n#EXTINF:1,\nother.mp4\n";
    for (const char* name : {"empty.mp4", "text.mp4", "list.mp4", "missing.mp4", "."}) {
        SCOPED_TRACE(name);
        const AVURLAsset asset(URL::fileURLWithPath(path(name)));
        EXPECT_TRUE(asset.tracks().empty());
        EXPECT_EQ(CMTimeCompare(asset.duration(), kCMTimeZero), 0);
        EXPECT_TRUE(asset.loadError());
    }
}

} // namespace anadrome
