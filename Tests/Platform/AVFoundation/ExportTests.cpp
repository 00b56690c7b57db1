#include "Platform/AVFoundation/AVAssetExportSession.h"
#include "Platform/AVFoundation/AVMutableComposition.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/LumaPicture.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <algorithm>
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
            EXPECT_EQ(out.pixelFormat + " " + out.range + " " + out.transfer, "yuv420p tv bt709");
            EXPECT_EQ(out.primaries, row.primaries);
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
        ClipOptions ramp{.width = 320, .height = 240, .frames = 2, .detail = Detail::Ramp, .colour = colour};
        ramp.videoCodec = "libx265";
        ramp.pixelFormat = "yuv420p10le";
        ramp.quality = 5;
        const auto asset = makeAsset(name, ramp);
        const std::string output = "flat-" + std::string(name);
        ASSERT_EQ(run(sessionFor(asset, output)).failure(), "");
        const VideoFacts video = readMovie(path(output)).video.at(0);
        EXPECT_EQ(video.pixelFormat + " " + video.transfer + " " + video.primaries + " " + video.matrix,
                  "yuv420p bt709 bt709 bt709");

        // Averages over twentieths of the ramp, which leave out the coder's noise.
        const LumaPicture picture = lumaPictures(path(output)).at(0);
        const int row = static_cast<int>(0.275 * picture.height);
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
}

} // namespace anadrome
