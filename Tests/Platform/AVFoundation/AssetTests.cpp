#include "Platform/CoreVideo/CVImageBufferKeys.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"

#include <fstream>

namespace anadrome {

using namespace testing_support;

namespace {

using AssetTest = MediaTest;

std::string extension(const AVAssetTrackRef& track, const char* key) {
    const auto& extensions = CMFormatDescriptionGetExtensions(track->formatDescriptions().front());
    const std::string* value = extensions ? findString(*extensions, key) : nullptr;
    return value ? *value : "";
}

} // namespace

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
        {"uneven.mp4", {.frames = 40, .timeScale = 600, .frameTicks = {10, 50}}, 0, 2, 20},
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

TEST_F(AssetTest, NaturalSizeIsInSquarePixelsBeforeTheTransform) {
    EXPECT_EQ(makeVideoTrack("turned.mp4", {.width = 160, .height = 96, .orientation = Orientation::Rotate90})
                  ->naturalSize(),
              (CGSize{160, 96}));
    EXPECT_EQ(makeVideoTrack("wide.mp4", {.width = 96, .height = 96, .pixelAspect = {16, 11}})->naturalSize(),
              (CGSize{140, 96}));
}

TEST_F(AssetTest, ReadsAllNineTermsOfTheDisplayMatrix) {
    const CGAffineTransform quarter =
        makeVideoTrack("a.mp4", {.width = 160, .height = 96, .orientation = Orientation::Rotate90})
            ->preferredTransform();
    EXPECT_EQ(quarter, (CGAffineTransform{0, 1, -1, 0, 96, 0}));
    const CGAffineTransform mirrored =
        makeVideoTrack("b.mov", {.width = 160, .height = 96, .orientation = Orientation::MirrorLeftRight})
            ->preferredTransform();
    EXPECT_EQ(mirrored, (CGAffineTransform{-1, 0, 0, 1, 160, 0}));
}

TEST_F(AssetTest, ColourExtensionsAreThereOnlyForTaggedClips) {
    const AVAssetTrackRef hlg = makeVideoTrack(
        "hlg.mp4", {.videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = ColourPreset::Hlg});
    EXPECT_EQ(extension(hlg, kCVImageBufferTransferFunctionKey),
              kCVImageBufferTransferFunction_ITU_R_2100_HLG);
    EXPECT_EQ(extension(hlg, kCVImageBufferColorPrimariesKey), kCVImageBufferColorPrimaries_ITU_R_2020);
    EXPECT_EQ(extension(hlg, kCVImageBufferYCbCrMatrixKey), kCVImageBufferYCbCrMatrix_ITU_R_2020);
    const AVAssetTrackRef untagged = makeVideoTrack("untagged.mp4", {.colour = ColourPreset::Untagged});
    EXPECT_FALSE(CMFormatDescriptionGetExtensions(untagged->formatDescriptions().front()));
}

TEST_F(AssetTest, ListsOnlyTracksThatCanBeDecodedAndShown) {
    const auto asset = makeAsset(
        "phone.mov",
        {.audioCodec = "aac", .secondAudioTrack = true, .unknownFirstSound = true, .dataTrack = true});
    EXPECT_EQ(asset->tracksWithMediaType(AVMediaTypeVideo).size(), 1U);
    const auto sound = asset->tracksWithMediaType(AVMediaTypeAudio);
    ASSERT_EQ(sound.size(), 1U);
    EXPECT_NE(sound.front()->streamIndex(), 1);
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
        ASSERT_TRUE(asset.loadError());
        EXPECT_FALSE(asset.loadError()->localizedDescription().empty());
    }
}

} // namespace anadrome
