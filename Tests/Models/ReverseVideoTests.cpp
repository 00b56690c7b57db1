#include "Models/VideoEncoder.h"
#include "Models/VideoFileManager.h"
#include "Models/VideoFrameManager.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/LumaPicture.h"
#include "Tests/Support/MovieBoxes.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <filesystem>
#include <fstream>
#include <future>
#include <mutex>

namespace anadrome {

using namespace testing_support;

namespace {

struct Outcome {
    bool success = false;
    std::optional<std::string> message;
    std::string path;
    std::vector<float> progress;
};

class ReverseVideoTest : public ClipTest {
protected:
    ReverseVideoTest() { VideoFileManager::removeAllWorkFiles(); }

    /// A clip whose index is whole and whose pictures are nothing but zeros.
    std::string clipWithBlankMedia(const std::string& name) {
        const std::string path = clip(name, {.frames = 5});
        std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
        std::string content((std::istreambuf_iterator<char>(file)), {});
        const std::size_t media = content.find("mdat") + 4;
        const std::size_t index = content.find("moov") - 4;
        file.seekp(static_cast<std::streamoff>(media));
        file << std::string(index - media, '\0');
        return path;
    }

    Outcome reverse(const std::string& path, AVFileType fileType = AVFileTypeQuickTimeMovie,
                    bool isReverseOnly = true) {
        Outcome outcome;
        std::mutex mutex;
        VideoEncoder encoder([&](float progress) {
            const std::lock_guard lock(mutex);
            outcome.progress.push_back(progress);
        });
        const URL output = VideoFileManager::videosDirectory().appendingPathComponent(
            NSProcessInfo::processInfo().globallyUniqueString() +
            (fileType == AVFileTypeMPEG4 ? ".mp4" : ".mov"));
        std::promise<void> done;
        encoder.reverseVideo(
            URL::fileURLWithPath(path), output, fileType,
            [&](bool success, std::optional<std::string> message) {
                outcome.success = success;
                outcome.message = std::move(message);
                done.set_value();
            },
            isReverseOnly);
        done.get_future().wait();
        outcome.path = output.path();
        return outcome;
    }
};

void expectReversed(const std::string& source, const std::string& output) {
    const VideoFacts in = readMovie(source).video.at(0);
    const VideoFacts out = readMovie(output).video.at(0);
    ASSERT_EQ(out.frames.size(), in.frames.size());
    for (std::size_t i = 0; i < out.frames.size(); ++i) {
        EXPECT_EQ(out.frames[i].number, in.frames[in.frames.size() - 1 - i].number) << i;
        EXPECT_NEAR(out.frames[i].seconds, in.frames[i].seconds, 1e-6) << i;
    }
    EXPECT_EQ(out.codecTag, "hvc1");
    EXPECT_EQ(out.displayMatrix, in.displayMatrix);
    EXPECT_EQ(out.decodeErrors, 0);
}

} // namespace

TEST_F(ReverseVideoTest, EveryFrameStandsAtTheMirroredPlaceAndTime) {
    const struct {
        const char* name;
        ClipOptions options;
        AVFileType fileType = AVFileTypeQuickTimeMovie;
    } rows[] = {
        {"plain.mp4", {.frames = 40, .bFrames = 2}, AVFileTypeMPEG4},
        {"ntsc.mov", {.frames = 40, .frameRate = {30000, 1001}, .openGop = true}},
        {"uneven.mp4", {.frames = 20, .frameTicks = {20, 7, 41}}},
        {"late.mp4", {.frames = 12, .startSeconds = 10}},
        {"one.mp4", {.frames = 1}},
        {"tiny.mp4", {.width = 34, .height = 18, .frames = 5}},
        {"turned.mp4", {.frames = 6, .orientation = Orientation::Rotate270}},
        {"mirrored.mov", {.frames = 6, .orientation = Orientation::Transverse}},
        {"odd.mkv", {.width = 161, .height = 97, .frames = 10, .pixelFormat = "yuv444p"}},
        {"interlaced.mp4", {.frames = 12, .pixelFormat = "yuv422p", .interlaced = true}},
        {"frames.mov", {.frames = 8, .videoCodec = "prores_ks", .pixelFormat = "yuv422p10le"}},
        {"pictures.avi", {.frames = 8, .videoCodec = "mjpeg", .pixelFormat = "yuvj420p"}},
        {"broadcast.ts", {.frames = 25, .frameRate = {25, 1}}},
        {"fragmented.mp4", {.frames = 30, .fragmented = true}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string source = clip(row.name, row.options);
        const Outcome outcome = reverse(source, row.fileType);
        ASSERT_TRUE(outcome.success) << outcome.message.value_or("");
        EXPECT_FALSE(outcome.message);
        expectReversed(source, outcome.path);
        EXPECT_TRUE(std::filesystem::is_empty(VideoFrameManager::framesDirectory().path()));
    }
}

TEST_F(ReverseVideoTest, WhatTheEditsLeaveOutIsNotReversed) {
    ClipOptions fragments{.frames = 68, .videoCodec = "libx265", .gop = 30, .bFrames = 2, .fragmented = true};
    const std::string source = clip("fragments.mov", fragments);
    setEdits(source, {{.seconds = 0, .mediaSeconds = 10 / 30.0}});
    const Outcome outcome = reverse(source);
    ASSERT_TRUE(outcome.success) << outcome.message.value_or("");
    const VideoFacts video = readMovie(outcome.path).video.at(0);
    ASSERT_EQ(video.frames.size(), 58U);
    EXPECT_EQ(video.frameCount, 58);
    for (std::size_t i = 0; i < video.frames.size(); ++i) {
        EXPECT_EQ(video.frames[i].number, 67 - static_cast<int>(i));
        EXPECT_NEAR(video.frames[i].seconds, static_cast<double>(i) / 30, 1e-3) << i;
    }
}

TEST_F(ReverseVideoTest, PicturesTooSmallForTheEncoderKeepTheirSizeAndLook) {
    const ClipOptions rows[] = {
        {.width = 10, .height = 12, .frames = 8, .pixelFormat = "yuv444p", .quality = 5},
        {.width = 6, .height = 8, .frames = 8, .quality = 5},
        {.width = 14, .height = 40, .frames = 8, .quality = 5},
        {.width = 96, .height = 8, .frames = 8, .quality = 5},
        {.width = 12,
         .height = 10,
         .frames = 8,
         .videoCodec = "ffv1",
         .pixelFormat = "yuv420p10le",
         .colour = ColourPreset::Hlg},
    };
    for (const ClipOptions& options : rows) {
        SCOPED_TRACE(std::to_string(options.width) + "x" + std::to_string(options.height));
        const std::string source = clip("tiny.mkv", options);
        const Outcome outcome = reverse(source, AVFileTypeMPEG4);
        ASSERT_TRUE(outcome.success) << outcome.message.value_or("");
        expectReversed(source, outcome.path);
        const VideoFacts video = readMovieHeaders(outcome.path).video.at(0);
        EXPECT_EQ(std::pair(video.width, video.height), std::pair(options.width, options.height));
        const std::vector<LumaPicture> in = lumaPictures(source);
        const std::vector<LumaPicture> out = lumaPictures(outcome.path);
        ASSERT_EQ(out.size(), in.size());
        EXPECT_GT(meanDifference(in.front(), in.back()), 8) << "they can be told apart";
        for (std::size_t i = 0; i < out.size(); ++i)
            EXPECT_LT(meanDifference(out[i], in[in.size() - 1 - i]), 6) << i;
        std::filesystem::remove(source);
    }
}

TEST_F(ReverseVideoTest, HighDynamicRangeKeepsItsTenBitsAndTags) {
    for (const auto& [colour, transfer] :
         {std::pair(ColourPreset::Hlg, "arib-std-b67"), std::pair(ColourPreset::Pq, "smpte2084")}) {
        const std::string source =
            clip("hdr.mov",
                 {.frames = 10, .videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = colour});
        const Outcome outcome = reverse(source);
        ASSERT_TRUE(outcome.success);
        expectReversed(source, outcome.path);
        const VideoFacts video = readMovieHeaders(outcome.path).video.at(0);
        EXPECT_EQ(video.pixelFormat + " " + video.primaries + " " + video.matrix,
                  "yuv420p10le bt2020 bt2020nc");
        EXPECT_EQ(video.transfer, transfer);
    }
}

TEST_F(ReverseVideoTest, LumaAndTagsSurviveFullRangeAndUntaggedSources) {
    const std::pair<ClipOptions, const char*> rows[] = {
        {{.frames = 6, .fullRange = true, .quality = 8}, "bt709"},
        {{.frames = 6, .colour = ColourPreset::Untagged, .quality = 8}, "unknown"},
    };
    for (const auto& [options, matrix] : rows) {
        SCOPED_TRACE(matrix);
        const std::string source = clip("clip.mp4", options);
        const VideoFacts in = readMovie(source).video.at(0);
        const VideoFacts out = readMovie(reverse(source).path).video.at(0);
        EXPECT_EQ(out.matrix, matrix);
        EXPECT_EQ(out.range, "tv");
        for (std::size_t i = 0; i < out.frames.size(); ++i)
            EXPECT_NEAR(out.frames[i].meanLuma, in.frames[in.frames.size() - 1 - i].meanLuma, 1.0) << i;
    }
}

TEST_F(ReverseVideoTest, AnamorphicClipsKeepTheirShape) {
    const std::string wide =
        clip("wide.mp4", {.width = 96, .height = 96, .frames = 5, .pixelAspect = {16, 11}});
    const VideoFacts video = readMovie(reverse(wide).path).video.at(0);
    EXPECT_EQ(std::pair(video.width, video.height), std::pair(140, 96));
    EXPECT_EQ(video.frames.at(0).number, 4);
}

TEST_F(ReverseVideoTest, SoundRunsBackwardsWithItsChannelsSwapped) {
    const std::string source =
        clip("tones.mov", {.frames = 120, .audioCodec = "pcm_s16le", .audioRate = 44100, .audioChannels = 2});
    const Outcome outcome = reverse(source);
    ASSERT_TRUE(outcome.success);
    const MovieFacts movie = readMovie(outcome.path);
    const Sound& sound = movie.sound.at(0).sound;
    for (int second = 0; second < 4; ++second)
        for (int channel = 0; channel < 2; ++channel)
            EXPECT_NEAR(toneIn(sound, channel, 3 - second + 0.2, 0.6).value_or(0),
                        toneFrequency(second, 1 - channel, 2), 4)
                << "second " << second << ", channel " << channel;
    // The first buffer of the source is left out, and nothing else.
    EXPECT_NEAR(movie.sound.at(0).durationSeconds, 4 - 1024 / 44100.0, 0.001);
    EXPECT_NEAR(sound.firstSampleSeconds, 0, 0.0005);
    EXPECT_NEAR(level(sound, 0, 0, 0.03).value_or(-200), -9, 2);
}

TEST_F(ReverseVideoTest, SoundOfAnyNumberOfChannelsBecomesStereoOfTheSameLength) {
    for (const auto& [channels, rate] : {std::pair(1, 22050), {6, 48000}}) {
        const std::string source =
            clip("sound.mov",
                 {.frames = 90, .audioCodec = "pcm_s16le", .audioRate = rate, .audioChannels = channels});
        const MovieFacts movie = readMovie(reverse(source).path);
        const SoundFacts& track = movie.sound.at(0);
        EXPECT_EQ(std::pair(track.sampleRate, track.channelCount), std::pair(44100, 2));
        EXPECT_NEAR(track.durationSeconds, 3, 0.06);
        EXPECT_NEAR(level(track.sound, 0, 0.5, 2).value_or(-200), -9, 6);
    }
}

TEST_F(ReverseVideoTest, SoundStartsWithThePictureAlsoWhenThatStartsLate) {
    const Outcome outcome = reverse(
        clip("late.mov", {.frames = 60, .startSeconds = 5, .audioCodec = "pcm_s16le", .audioRate = 44100}));
    ASSERT_TRUE(outcome.success);
    const MovieFacts movie = readMovie(outcome.path);
    const SoundFacts& track = movie.sound.at(0);
    EXPECT_NEAR(movie.video.at(0).startSeconds, 5, 1e-6);
    EXPECT_NEAR(track.sound.firstSampleSeconds, 5, 0.001);
    EXPECT_NEAR(level(track.sound, 0, 5, 0.03).value_or(-200), -9, 2) << "the encoder's padding is heard";
    EXPECT_NEAR(toneIn(track.sound, 0, 5.2, 0.6).value_or(0), toneFrequency(1, 1, 2), 4);
}

TEST_F(ReverseVideoTest, TheFirstSoundThatCanBeDecodedIsUsed) {
    ClipOptions options{
        .frames = 60, .audioCodec = "aac", .secondAudioTrack = true, .unknownFirstSound = true};
    const MovieFacts movie = readMovie(reverse(clip("phone.mov", options)).path);
    ASSERT_EQ(movie.sound.size(), 1U);
    EXPECT_NEAR(toneIn(movie.sound[0].sound, 1, 1.2, 0.6).value_or(0), toneFrequency(0, 0, 2, 1), 4);

    options.secondAudioTrack = false;
    const Outcome silent = reverse(clip("mute.mov", options));
    ASSERT_TRUE(silent.success);
    EXPECT_TRUE(readMovieHeaders(silent.path).sound.empty());
}

TEST_F(ReverseVideoTest, ProgressFillsTheFirstHalfOrTheFirstQuarter) {
    const std::string source = clip("ten.mp4", {.frames = 10});
    for (const auto& [isReverseOnly, weight] : {std::pair(true, 0.5F), std::pair(false, 0.25F)}) {
        const Outcome outcome = reverse(source, AVFileTypeMPEG4, isReverseOnly);
        ASSERT_EQ(outcome.progress.size(), 20U);
        for (const auto& [report, part] : {std::pair(0U, 0.05F), {9, 0.5F}, {10, 0.5F}, {19, 0.95F}})
            EXPECT_FLOAT_EQ(outcome.progress[report], part * weight);
    }
}

TEST_F(ReverseVideoTest, EachFailureHasItsMessage) {
    const std::string good = clip("good.mp4", {.frames = 5});
    for (const auto& [clip, message] :
         {std::pair(clipWithBlankMedia("blank.mp4"), "Failed to read video buffer"),
          {path("missing.mp4"), "Reverse: Failed to init reader"}}) {
        const Outcome outcome = reverse(clip);
        EXPECT_FALSE(outcome.success);
        EXPECT_EQ(outcome.message, message);
        EXPECT_FALSE(std::filesystem::exists(outcome.path));
    }

    std::promise<std::string> refused;
    VideoEncoder([](float) {})
        .reverseVideo(
            URL::fileURLWithPath(good), URL::fileURLWithPath(good), AVFileTypeMPEG4,
            [&](bool, std::optional<std::string> message) { refused.set_value(message.value_or("")); }, true);
    EXPECT_EQ(refused.get_future().get(),
              "Failed to write: Optional(Error Domain=AVFoundationErrorDomain Code=-11823 "
              "\"A file with this name exists already.\")");
    EXPECT_TRUE(readMovieHeaders(good).video.size() == 1) << "the file that was in the way is untouched";
}

} // namespace anadrome
