#include "Platform/AVFoundation/AVAssetExportSession.h"
#include "Platform/AVFoundation/AVMutableComposition.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/LumaPicture.h"
#include "Tests/Support/ShownNumbers.h"
#include "Tests/Support/ToneTrack.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <future>

namespace anadrome {

using namespace testing_support;

namespace {

using LayerInstruction = AVMutableVideoCompositionLayerInstruction;
using Numbers = std::vector<std::optional<int>>;

CMTime thirtieths(std::int64_t count) {
    return CMTimeMake(count, 30);
}

CMTimeRange between(std::int64_t start, std::int64_t end) {
    return CMTimeRangeFromTimeToTime(thirtieths(start), thirtieths(end));
}

LayerInstruction layerOf(const AVAssetTrack& track) {
    return LayerInstruction::videoCompositionLayerInstructionWithAssetTrack(track);
}

AVMutableVideoCompositionInstruction instruction(const CMTimeRange& range,
                                                 std::vector<LayerInstruction> layers) {
    AVMutableVideoCompositionInstruction made;
    made.setTimeRange(range);
    made.setLayerInstructions(std::move(layers));
    return made;
}

AVMutableVideoComposition canvas(CGSize size,
                                 std::vector<AVMutableVideoCompositionInstruction> instructions) {
    AVMutableVideoComposition composition;
    composition.setFrameDuration(thirtieths(1));
    composition.setRenderSize(size);
    composition.setInstructions(std::move(instructions));
    return composition;
}

struct Ended {
    AVAssetExportSessionStatus status;
    std::optional<NSError> error;

    bool completed() const { return status == AVAssetExportSessionStatus::completed && !error; }
    long code() const { return error ? error->code() : 0; }
    /// Empty for an export that completed.
    std::string failure() const {
        return completed() ? "" : error ? error->description() : "ended without completing";
    }
};

class ExportSessionTest : public MediaTest {
protected:
    std::shared_ptr<AVAssetExportSession> sessionFor(const std::shared_ptr<const AVAsset>& asset,
                                                     const std::string& output) const {
        auto session = AVAssetExportSession::exportSessionWithAsset(asset, AVAssetExportPreset1280x720);
        session->setOutputURL(URL::fileURLWithPath(path(output)));
        session->setOutputFileType(output.ends_with(".mp4") ? AVFileTypeMPEG4 : AVFileTypeQuickTimeMovie);
        return session;
    }

    static Ended run(const std::shared_ptr<AVAssetExportSession>& session) {
        std::promise<void> ended;
        EXPECT_EQ(session->status(), AVAssetExportSessionStatus::unknown);
        // A second call of the handler would throw.
        session->exportAsynchronouslyWithCompletionHandler([&] { ended.set_value(); });
        ended.get_future().wait();
        return {session->status(), session->error()};
    }
};

} // namespace

TEST_F(ExportSessionTest, AnotherEditIsAMatterOfDescribingIt) {
    const auto first = makeAsset("first.mov", {.frames = 12, .audioCodec = "aac"});
    const auto second =
        makeAsset("second.mov", {.frames = 50, .frameRate = {25, 1}, .audioCodec = "pcm_s16le"});
    const auto third = makeAsset("third.mov", {.frames = 30, .countsDown = true});
    const auto composition = std::make_shared<AVMutableComposition>();
    const auto pictures = composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    const auto sound = composition->addMutableTrackWithMediaType(AVMediaTypeAudio, 0);
    // Twelve frames of the first, a second of the second at double speed, nine frames of the third.
    const auto videoOf = [](const auto& asset) { return asset->tracksWithMediaType(AVMediaTypeVideo).at(0); };
    ASSERT_FALSE(pictures->insertTimeRange(between(0, 12), videoOf(first), kCMTimeInvalid));
    ASSERT_FALSE(pictures->insertTimeRange(between(15, 45), videoOf(second), kCMTimeInvalid));
    ASSERT_FALSE(pictures->insertTimeRange(between(10, 19), videoOf(third), kCMTimeInvalid));
    const AVAssetTrackRef tone = second->tracksWithMediaType(AVMediaTypeAudio).at(0);
    ASSERT_FALSE(sound->insertTimeRange(between(0, 30), tone, thirtieths(12)));
    pictures->scaleTimeRange(between(12, 42), thirtieths(15));
    sound->scaleTimeRange(between(12, 42), thirtieths(15));

    const auto session = sessionFor(composition, "edit.mov");
    session->setVideoComposition(canvas({128, 96}, {instruction(between(0, 20), {layerOf(*pictures)}),
                                                    instruction(between(20, 36), {layerOf(*pictures)})}));
    session->setAudioTimePitchAlgorithm(AVAudioTimePitchAlgorithmVarispeed);
    ASSERT_EQ(run(session).failure(), "");
    EXPECT_EQ(session->progress(), 1);

    const MovieFacts movie = readMovie(path("edit.mov"));
    const VideoFacts source = readMovie(path("second.mov")).video.at(0);
    Numbers expected;
    for (int k = 0; k < 36; ++k)
        expected.push_back(k < 12   ? k
                           : k < 27 ? numberShownAt(source, 15 + 2 * (k - 12), {1, 30})
                                    : std::optional(29 - (10 + k - 27)));
    EXPECT_EQ(movie.video.at(0).numbers(), expected);
    const Sound& heard = movie.sound.at(0).sound;
    EXPECT_LT(level(heard, 0, 0.05, 0.3).value_or(0), -70);
    EXPECT_NEAR(toneIn(heard, 0, 0.45, 0.4).value_or(0), 2 * toneFrequency(0, 0, 2), 6);
    EXPECT_LT(level(heard, 0, 0.94, 0.2).value_or(0), -70);
}

TEST_F(ExportSessionTest, LayersLieOnOneAnotherWithTheirOpacity) {
    const auto top = makeVideoTrack("top.mov", {.width = 128, .height = 96, .frames = 12});
    const auto bottom =
        makeVideoTrack("bottom.mov", {.width = 128, .height = 96, .frames = 12, .countsDown = true});
    const auto composition = std::make_shared<AVMutableComposition>();
    const auto upper = composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    const auto lower = composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    ASSERT_FALSE(upper->insertTimeRange(between(0, 12), top, kCMTimeZero));
    ASSERT_FALSE(lower->insertTimeRange(between(0, 12), bottom, kCMTimeZero));
    LayerInstruction fading = layerOf(*upper);
    fading.setOpacity(0, thirtieths(9));
    fading.setOpacity(0.5, thirtieths(6));
    fading.setOpacity(0.75, thirtieths(6));
    fading.setOpacity(0.5, thirtieths(6));
    LayerInstruction moved = layerOf(*lower);
    moved.setTransform({1, 0, 0, 1, 64, 0}, thirtieths(11));

    const auto session = sessionFor(composition, "layers.mov");
    session->setVideoComposition(canvas({128, 96}, {instruction(between(0, 12), {fading, moved})}));
    ASSERT_EQ(run(session).failure(), "");
    const auto above = lumaPictures(path("top.mov"));
    const auto below = lumaPictures(path("bottom.mov"));
    const auto shown = lumaPictures(path("layers.mov"));
    ASSERT_EQ(shown.size(), 12U);
    EXPECT_EQ(shown[5].number(), 5) << "the first layer hides what is below";
    double off = 0;
    for (int y = 0; y < 96; ++y)
        for (int x = 0; x < 128; ++x)
            off += std::abs(shown[7].at(x, y) - (above[7].at(x, y) + below[7].at(x, y)) / 2.0);
    EXPECT_LT(off / (96 * 128), 2);
    EXPECT_GT(meanDifference(shown[7], above[7]), 5);
    EXPECT_EQ(shown[9].number(), 2) << "no layer hides what is below";
    EXPECT_NEAR(shown[11].at(30, 48), 16, 3);
    EXPECT_NEAR(shown[11].at(64 + 30, 20), below[11].at(30, 20), 4);
}

TEST_F(ExportSessionTest, VideoCompositionsThatDontFitFail) {
    const auto source = makeVideoTrack("clip.mov", {.width = 64, .height = 48, .frames = 12});
    const auto composition = std::make_shared<AVMutableComposition>();
    const auto track = composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 5);
    ASSERT_FALSE(track->insertTimeRange(between(0, 12), source, kCMTimeZero));
    const auto shown = [&](std::int64_t start, std::int64_t end) {
        return instruction(between(start, end), {layerOf(*track)});
    };
    LayerInstruction tilted = layerOf(*track);
    tilted.setTransform({0.8, 0.6, -0.6, 0.8, 0, 0}, kCMTimeZero);
    const struct {
        const char* what;
        AVMutableVideoComposition composition;
    } rows[] = {
        {"no instruction", canvas({64, 48}, {})},
        {"a gap", canvas({64, 48}, {shown(0, 5), shown(6, 12)})},
        {"an overlap", canvas({64, 48}, {shown(0, 6), shown(5, 12)})},
        {"a late start", canvas({64, 48}, {shown(1, 12)})},
        {"an early end", canvas({64, 48}, {shown(0, 11)})},
        {"the source's track", canvas({64, 48}, {instruction(between(0, 12), {layerOf(*source)})})},
        {"no size", canvas({0, 0}, {shown(0, 12)})},
        {"a tilt", canvas({64, 48}, {instruction(between(0, 12), {tilted})})},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(rows[i].what);
        const auto session = sessionFor(composition, std::to_string(i) + ".mov");
        session->setVideoComposition(rows[i].composition);
        const Ended ended = run(session);
        EXPECT_EQ(ended.status, AVAssetExportSessionStatus::failed);
        EXPECT_EQ(ended.code(), -11841);
    }
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(sessionFor(composition, "out.mov")->setVideoComposition(AVMutableVideoComposition()),
                 "positive frame duration");
}

TEST_F(ExportSessionTest, StretchesThatCannotBeExportedFail) {
    const auto asset = makeAsset("clip.mov", {.frames = 12, .audioCodec = "aac"});
    for (const auto& [mediaType, duration, code] : {std::tuple(AVMediaTypeVideo, thirtieths(0), -11825),
                                                    std::tuple(AVMediaTypeAudio, thirtieths(6), -11838)}) {
        const auto composition = std::make_shared<AVMutableComposition>();
        const auto track = composition->addMutableTrackWithMediaType(mediaType, 0);
        ASSERT_FALSE(
            track->insertTimeRange(between(0, 12), asset->tracksWithMediaType(mediaType).at(0), kCMTimeZero));
        track->scaleTimeRange(between(0, 12), duration);
        EXPECT_EQ(run(sessionFor(composition, "out.mov")).code(), code);
        EXPECT_FALSE(std::filesystem::exists(path("out.mov")));
    }
    EXPECT_FALSE(AVAssetExportSession::exportSessionWithAsset(asset, "AVAssetExportPresetOther"));
    EXPECT_FALSE(AVAssetExportSession::exportSessionWithAsset(std::make_shared<AVMutableComposition>(),
                                                              AVAssetExportPreset640x480));
}

TEST_F(ExportSessionTest, OrdinaryVideoKeepsItsPictureAndSaysWhatItIs) {
    const struct {
        const char* name;
        ClipOptions options;
        const char* primaries; ///< and the matrix
    } rows[] = {
        {"601.mov", {.colour = ColourPreset::Bt601}, "smpte170m"},
        {"709.mov", {}, "bt709"},
        {"full.mov", {.fullRange = true}, "bt709"},
        {"full601.mov", {.pixelFormat = "yuvj420p", .colour = ColourPreset::Bt601}, "smpte170m"},
        {"ten.mov", {.pixelFormat = "yuv420p10le"}, "bt709"},
        {"dense.mov", {.pixelFormat = "yuv444p"}, "bt709"},
        {"prores.mov", {.videoCodec = "prores_ks", .pixelFormat = "yuv422p10le"}, "bt709"},
        {"untagged.mov", {.colour = ColourPreset::Untagged}, "smpte170m"},
        {"large.mov", {.width = 1280, .height = 720, .colour = ColourPreset::Untagged}, "bt709"},
    };
    for (const auto& row : rows)
        for (const bool composed : {false, true}) {
            SCOPED_TRACE(std::string(row.name) + (composed ? ", composed" : ""));
            ClipOptions options = row.options;
            options.frames = 3;
            options.quality = 8;
            const auto asset = makeAsset(row.name, options);
            const AVAssetTrack& track = *asset->tracksWithMediaType(AVMediaTypeVideo).at(0);
            const std::string output = (composed ? "composed-" : "plain-") + std::string(row.name);
            const auto session = sessionFor(asset, output);
            if (composed)
                session->setVideoComposition(
                    canvas(track.naturalSize(), {instruction(between(0, 3), {layerOf(track)})}));
            ASSERT_EQ(run(session).failure(), "");
            const VideoFacts in = readMovie(path(row.name)).video.at(0);
            const VideoFacts out = readMovie(path(output)).video.at(0);
            EXPECT_EQ(out.pixelFormat, "yuv420p");
            EXPECT_EQ(out.range, "tv");
            EXPECT_EQ(out.primaries, row.primaries);
            EXPECT_EQ(out.transfer, "bt709");
            EXPECT_EQ(out.matrix, row.primaries);
            ASSERT_EQ(out.numbers(), in.numbers());
            for (std::size_t i = 0; i < out.frames.size(); ++i)
                EXPECT_NEAR(out.frames[i].meanLuma, in.frames[i].meanLuma, 1.0) << i;
            EXPECT_EQ(out.corners, kUprightCorners);
        }
}

TEST_F(ExportSessionTest, HighDynamicRangeBecomesOrdinaryVideoWithAllItsGreys) {
    for (const auto& [name, colour] :
         {std::pair("hlg.mov", ColourPreset::Hlg), std::pair("pq.mov", ColourPreset::Pq)}) {
        SCOPED_TRACE(name);
        const auto asset = makeAsset(name, {.width = 320,
                                            .height = 240,
                                            .frames = 2,
                                            .detail = Detail::Ramp,
                                            .videoCodec = "libx265",
                                            .pixelFormat = "yuv420p10le",
                                            .colour = colour,
                                            .quality = 5});
        const std::string output = "flat-" + std::string(name);
        ASSERT_EQ(run(sessionFor(asset, output)).failure(), "");
        const VideoFacts video = readMovie(path(output)).video.at(0);
        EXPECT_EQ(video.pixelFormat, "yuv420p");
        EXPECT_EQ(video.transfer, "bt709");
        EXPECT_EQ(video.primaries, "bt709");
        EXPECT_EQ(video.matrix, "bt709");

        // Averages over twentieths of the ramp, which leave out the coder's noise.
        const LumaPicture picture = lumaPictures(path(output)).at(0);
        const int row = static_cast<int>(0.275 * picture.height());
        std::vector<double> greys;
        for (int step = 0; step < 20; ++step) {
            double sum = 0;
            for (int x = step * 16; x < (step + 1) * 16; ++x)
                sum += picture.at(x, row);
            greys.push_back(sum / 16);
        }
        EXPECT_TRUE(std::ranges::is_sorted(greys)) << ::testing::PrintToString(greys);
        EXPECT_NEAR(greys.front(), 20, 6);
        EXPECT_GT(greys.back(), 220);
        EXPECT_LT(greys.back(), 240);
        for (int step = 5; step < 14; ++step)
            EXPECT_GT(greys[static_cast<std::size_t>(step) + 1] - greys[static_cast<std::size_t>(step)], 2)
                << "a mid-tone is clipped at " << step;
    }
}

TEST_F(ExportSessionTest, UnreadableSourcesAndUnwritableOutputsFail) {
    const ClipOptions options{.width = 320, .height = 240, .frames = 60, .detail = Detail::Rich};
    const auto asset = makeAsset("whole.mov", options);
    std::ofstream(path("kept.mov")) << "kept";
    EXPECT_EQ(run(sessionFor(asset, "kept.mov")).code(), -11823);
    EXPECT_EQ(run(sessionFor(asset, "none/out.mov")).status, AVAssetExportSessionStatus::failed);
    {
        const FileSizeLimit full(50'000);
        const Ended ended = run(sessionFor(asset, "full.mov"));
        EXPECT_EQ(ended.status, AVAssetExportSessionStatus::failed);
        EXPECT_EQ(ended.code(), -11807);
    }

    // The index stands, and half of the media is gone under it.
    const auto broken = makeAsset("broken.mov", options);
    ASSERT_EQ(broken->tracks().size(), 1U);
    std::fstream file(path("broken.mov"), std::ios::in | std::ios::out | std::ios::binary);
    const auto size = std::filesystem::file_size(path("broken.mov"));
    file.seekp(static_cast<std::streamoff>(size / 10));
    file << std::string(size / 10 * 7, '\0');
    file.close();
    const Ended ended = run(sessionFor(broken, "mended.mov"));
    EXPECT_TRUE(ended.completed() ? !readMovie(path("mended.mov")).video.at(0).frames.empty()
                                  : ended.status == AVAssetExportSessionStatus::failed);

    const auto gone = makeAsset("gone.mov", options);
    ASSERT_EQ(gone->tracks().size(), 1U);
    std::filesystem::remove(path("gone.mov"));
    const Ended lost = run(sessionFor(gone, "lost.mov"));
    EXPECT_EQ(lost.status, AVAssetExportSessionStatus::failed);
    EXPECT_TRUE(lost.error);
}

} // namespace anadrome
