#include "Tests/Support/ClipMaker.h"
#include "Tests/Support/MovieFile.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ReversedPsnr.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/ToneTrack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace anadrome::testing_support {
namespace {

std::vector<std::optional<int>> countingUp(int count) {
    std::vector<std::optional<int>> numbers(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        numbers[static_cast<std::size_t>(number)] = number;
    return numbers;
}

/// The first pictures of a clip as tight 8-bit luma planes.
struct Plane {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    LumaView view() const { return {pixels.data(), width, width, height}; }
};

std::vector<Plane> planesOf(const std::string& path) {
    std::vector<Plane> planes;
    forEachVideoFrame(path, [&](const AVFrame& frame, double) {
        const FrameLuma luma(frame);
        Plane plane{frame.width, frame.height, {}};
        for (int y = 0; y < frame.height; ++y)
            for (int x = 0; x < frame.width; ++x)
                plane.pixels.push_back(luma.view().data[y * luma.view().stride + x]);
        planes.push_back(std::move(plane));
    });
    return planes;
}

Plane turned(const Plane& plane, Orientation orientation) {
    const RelativePoint corner = shownAt(orientation, {0, 0});
    const RelativePoint along = shownAt(orientation, {1, 0});
    const bool sideways = corner.x == along.x;
    Plane shown{sideways ? plane.height : plane.width, sideways ? plane.width : plane.height, plane.pixels};
    for (int y = 0; y < plane.height; ++y)
        for (int x = 0; x < plane.width; ++x) {
            const auto [shownX, shownY] =
                shownAt(orientation, {(x + 0.5) / plane.width, (y + 0.5) / plane.height});
            const auto column = static_cast<int>(shownX * shown.width);
            const auto row = static_cast<int>(shownY * shown.height);
            shown.pixels[shown.at(column, row)] = plane.pixels[plane.at(x, y)];
        }
    return shown;
}

TEST(ClipMaker, WritesNumbersThatCanBeReadAtEverySizeQualityAndFormat) {
    struct Case {
        const char* file;
        ClipOptions options;
    };
    const Case cases[] = {
        {"small.mp4", {.width = 64, .height = 48, .quality = 45}},
        {"odd.mp4", {.width = 65, .height = 49, .pixelFormat = "yuv444p"}},
        {"upended.mp4", {.width = 64, .height = 114, .quality = 40}},
        {"rich.mp4", {.width = 640, .height = 360, .detail = Detail::Rich, .bFrames = 2, .quality = 40}},
        {"large.mp4", {.width = 3840, .height = 2160, .frames = 3, .quality = 45}},
        {"hlg.mov",
         {.videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = ColourPreset::Hlg, .bFrames = 2}},
        {"pq.mov", {.videoCodec = "prores_ks", .pixelFormat = "yuv422p10le", .colour = ColourPreset::Pq}},
        {"opaque.mov", {.frames = 3, .videoCodec = "prores_ks", .pixelFormat = "yuva444p10le"}},
        {"fields.mp4", {.interlaced = true}},
        {"open.mkv", {.gop = 10, .bFrames = 3, .openGop = true}},
        {"pieces.mp4", {.bFrames = 2, .fragmented = true}},
        {"old.avi", {.videoCodec = "mpeg4", .quality = 20}},
        {"stills.mov", {.videoCodec = "mjpeg", .pixelFormat = "yuvj420p"}},
        {"rgb.mov", {.frames = 3, .videoCodec = "png", .pixelFormat = "rgb24"}},
        {"lossless.mkv", {.videoCodec = "ffv1", .pixelFormat = "yuv422p"}},
        {"stream.ts", {.bFrames = 2}},
    };
    const ScratchFolder folder;
    for (const auto& [file, options] : cases) {
        SCOPED_TRACE(file);
        makeClip(folder.file(file), options);
        const VideoFacts video = readMovie(folder.file(file)).video.at(0);
        EXPECT_EQ(video.numbers(), countingUp(options.frames));
        EXPECT_EQ(video.corners, kUprightCorners);
        EXPECT_EQ(video.width, options.width);
        EXPECT_EQ(video.decodeErrors, 0);
        EXPECT_EQ(video.isInterlaced, options.interlaced);
    }
}

TEST(PictureReading, ReadsNumbersHoweverThePictureIsTurned) {
    const ScratchFolder folder;
    makeClip(folder.file("a.mkv"), {.width = 96, .height = 64, .frames = 6, .videoCodec = "ffv1"});
    const Plane last = planesOf(folder.file("a.mkv")).back();
    for (int index = 0; index < kOrientationCount; ++index) {
        SCOPED_TRACE(index);
        const auto orientation = static_cast<Orientation>(index);
        const Plane shown = turned(last, orientation);
        EXPECT_EQ(orientationOf(shown.view()), orientation);
        EXPECT_EQ(readFrameNumber(shown.view()), 5);
    }
}

TEST(PictureReading, RefusesPicturesThatDoNotShowOneNumber) {
    const ScratchFolder folder;
    makeClip(folder.file("a.mkv"), {.width = 96, .height = 64, .frames = 2, .videoCodec = "ffv1"});
    const auto planes = planesOf(folder.file("a.mkv"));
    Plane blended = planes[0];
    Plane torn = planes[0];
    for (std::size_t index = 0; index < blended.pixels.size(); ++index) {
        blended.pixels[index] =
            static_cast<std::uint8_t>((planes[0].pixels[index] + planes[1].pixels[index]) / 2);
        if (index > torn.pixels.size() * 6 / 10)
            torn.pixels[index] = planes[1].pixels[index];
    }
    Plane blank = planes[0];
    std::fill(blank.pixels.begin(), blank.pixels.end(), std::uint8_t{126});
    EXPECT_EQ(readFrameNumber(blended.view()), std::nullopt);
    EXPECT_EQ(readFrameNumber(torn.view()), std::nullopt);
    EXPECT_EQ(readFrameNumber(blank.view()), std::nullopt);
}

TEST(ClipMaker, WritesTheMatrixThatTurnsThePictureBackToTheOrigin) {
    struct Case {
        const char* name;
        int a, b, c, d, x, y;
    };
    const Case cases[] = {
        {"rotate90", 0, 1, -1, 0, 48, 0},     {"rotate180", -1, 0, 0, -1, 64, 48},
        {"rotate270", 0, -1, 1, 0, 0, 64},    {"mirror", -1, 0, 0, 1, 64, 0},
        {"flip", 1, 0, 0, -1, 0, 48},         {"transpose", 0, 1, 1, 0, 0, 0},
        {"transverse", 0, -1, -1, 0, 48, 64},
    };
    const ScratchFolder folder;
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const std::string path = folder.file(std::string(row.name) + ".mov");
        makeClip(path, {.width = 64, .height = 48, .frames = 1, .orientation = *orientationNamed(row.name)});
        const auto matrix = readMovieHeaders(path).video.at(0).displayMatrix;
        const int one = 1 << 16;
        EXPECT_EQ(matrix, (DisplayMatrix{row.a * one, row.b * one, 0, row.c * one, row.d * one, 0,
                                         row.x * one, row.y * one, 1 << 30}));
    }
}

TEST(ClipMaker, TagsTheColoursAndKeepsTheLevelsOfEitherRange) {
    const ScratchFolder folder;
    const auto made = [&](const char* name, const ClipOptions& options) {
        makeClip(folder.file(name), options);
        return readMovie(folder.file(name)).video.at(0);
    };
    const VideoFacts hlg = made(
        "hlg.mov",
        {.frames = 1, .videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = ColourPreset::Hlg});
    EXPECT_EQ(hlg.primaries + "/" + hlg.transfer + "/" + hlg.matrix, "bt2020/arib-std-b67/bt2020nc");
    EXPECT_EQ(hlg.pixelFormat + " " + hlg.codecTag, "yuv420p10le hvc1");
    const VideoFacts untagged = made("untagged.mov", {.frames = 1, .colour = ColourPreset::Untagged});
    EXPECT_EQ(untagged.primaries + "/" + untagged.transfer + "/" + untagged.matrix,
              "unknown/unknown/unknown");
    const VideoFacts limited = made("limited.mp4", {.frames = 1, .colour = ColourPreset::Bt601});
    const VideoFacts full = made("full.mp4", {.frames = 1, .colour = ColourPreset::Bt601, .fullRange = true});
    EXPECT_EQ(limited.matrix + " " + limited.range, "smpte170m tv");
    EXPECT_EQ(full.matrix + " " + full.range, "smpte170m pc");
    EXPECT_NEAR(limited.frames.at(0).meanLuma, full.frames.at(0).meanLuma, 0.5);
}

TEST(ClipMaker, StartsPictureAndSoundWhenTold) {
    const ScratchFolder folder;
    for (const char* name : {"late.mov", "late.mp4", "late.mkv"}) {
        SCOPED_TRACE(name);
        makeClip(folder.file(name), {.frames = 12,
                                     .frameRate = {24, 1},
                                     .startSeconds = 1.5,
                                     .bFrames = 2,
                                     .audioCodec = "aac",
                                     .audioStartSeconds = 0.75});
        const MovieFacts movie = readMovie(folder.file(name));
        ASSERT_EQ(movie.video.at(0).frames.size(), 12u);
        EXPECT_NEAR(movie.video[0].frames[0].seconds, 1.5, 0.001);
        EXPECT_NEAR(movie.video[0].frames[11].seconds, 1.5 + 11 / 24.0, 0.001);
        const Sound& sound = movie.sound.at(0).sound;
        EXPECT_LT(level(sound, 0, 0.732, 0.010).value_or(0), -30);
        EXPECT_GT(level(sound, 0, 0.752, 0.010).value_or(-99), -12);
    }
}

TEST(ClipMaker, TimesFramesByThePattern) {
    const ScratchFolder folder;
    makeClip(folder.file("a.mov"), {.frames = 5, .timeScale = 600, .frameTicks = {20, 50, 10}});
    const VideoFacts video = readMovie(folder.file("a.mov")).video.at(0);
    EXPECT_EQ(video.timeBase.den, 600);
    std::vector<std::int64_t> times;
    for (const FrameFacts& frame : video.frames)
        times.push_back(frame.pts);
    EXPECT_EQ(times, (std::vector<std::int64_t>{0, 20, 70, 80, 100}));
    EXPECT_NEAR(video.durationSeconds, 150 / 600.0, 1e-9);
}

TEST(ClipMaker, SoundsTheToneOfEverySecondOnEveryChannel) {
    struct Case {
        const char* file;
        const char* codec;
        int rate;
        int channels;
        double shortfall; ///< sound that compression may swallow at the end
    };
    const Case cases[] = {{"stereo.mp4", "aac", 48000, 2, 0},
                          {"mono.mov", "pcm_s16be", 44100, 1, 0},
                          {"six.mov", "pcm_s16le", 48000, 6, 0},
                          {"mp3.mp4", "libmp3lame", 44100, 2, 0.05}};
    const ScratchFolder folder;
    for (const Case& row : cases) {
        makeClip(folder.file(row.file), {.width = 64,
                                         .height = 48,
                                         .frames = 60,
                                         .audioCodec = row.codec,
                                         .audioRate = row.rate,
                                         .audioChannels = row.channels,
                                         .audioSeconds = 22});
        const SoundFacts facts = readMovie(folder.file(row.file)).sound.at(0);
        SCOPED_TRACE(row.file);
        EXPECT_EQ(facts.sound.sampleRate, row.rate);
        EXPECT_EQ(facts.sound.channelCount, row.channels);
        EXPECT_NEAR(facts.sound.seconds(), 22, 0.03 + row.shortfall);
        EXPECT_LT(facts.worstSlip, 0.001);
        for (const int second : {0, 7, 19, 20})
            for (int channel = 0; channel < row.channels; ++channel) {
                SCOPED_TRACE(testing::Message() << "second " << second << ", channel " << channel);
                const auto pitch = dominantFrequency(facts.sound, channel, second + 0.25, 0.5);
                EXPECT_NEAR(pitch.value_or(0), toneFrequency(second, channel, row.channels), 2);
                EXPECT_NEAR(level(facts.sound, channel, second + 0.25, 0.5).value_or(0), -9.03, 0.5);
            }
    }
}

TEST(ClipMaker, MakesTheFirstSoundUndecodableAndLeavesTheSecond) {
    const ScratchFolder folder;
    for (const char* codec : {"aac", "pcm_s16le"})
        for (const char* name : {"a.mov", "fragments.mov", "a.mp4"}) {
            if (codec != std::string("aac") && name == std::string("a.mp4"))
                continue; // mp4 does not take this sound
            SCOPED_TRACE(std::string(codec) + " in " + name);
            makeClip(folder.file(name), {.audioCodec = codec,
                                         .secondAudioTrack = true,
                                         .unknownFirstSound = true,
                                         .dataTrack = true,
                                         .fragmented = name == std::string("fragments.mov")});
            const MovieFacts movie = readMovie(folder.file(name));
            ASSERT_EQ(movie.sound.size(), 2u);
            EXPECT_EQ(movie.sound[0].codecTag, "xq4z");
            EXPECT_FALSE(movie.sound[0].canDecode);
            EXPECT_TRUE(movie.sound[1].canDecode);
            EXPECT_NEAR(dominantFrequency(movie.sound[1].sound, 0, 0.25, 0.5).value_or(0),
                        toneFrequency(0, 0, 2, 1), 2);
            EXPECT_EQ(movie.otherTracks, 1);
            EXPECT_EQ(movie.video.at(0).numbers(), countingUp(30));
        }
}

TEST(ReversedPsnr, ComparesEveryFrameWithItsMirrorImageInTime) {
    const ScratchFolder folder;
    const ClipOptions options{.width = 64, .height = 48, .frames = 50, .detail = Detail::Rich, .gop = 12};
    const auto made = [&](const char* name, const ClipOptions& changed) {
        makeClip(folder.file(name), changed);
        return folder.file(name);
    };
    ClipOptions down = options;
    down.countsDown = true;
    down.bFrames = 2;
    ClipOptions exact = options;
    exact.videoCodec = "ffv1";
    ClipOptions exactDown = exact;
    exactDown.countsDown = true;
    const std::string up = made("up.mkv", exact);
    const std::string coded = made("coded.mp4", down);

    EXPECT_EQ(reversedPsnr(up, made("down.mkv", exactDown)), 100);
    EXPECT_LT(reversedPsnr(up, up).value_or(100), 20);
    const double whole = reversedPsnr(up, coded).value_or(0);
    EXPECT_GT(whole, 30);
    EXPECT_LT(whole, 60);
    constexpr std::int64_t kSevenPictures = std::int64_t{2} * 7 * 64 * 48;
    EXPECT_NEAR(reversedPsnr(up, coded, kSevenPictures).value_or(0), whole, 1e-6);
}

TEST(ClipMaker, SaysWhatIsWrongWithItsOptions) {
    const ScratchFolder folder;
    EXPECT_THROW(makeClip(folder.file("a.mp4"), {.videoCodec = "nothing"}), std::runtime_error);
    EXPECT_THROW(makeClip(folder.file("a.mp4"), {.pixelFormat = "nothing"}), std::runtime_error);
    EXPECT_THROW(makeClip(folder.file("a.nothing"), {}), std::runtime_error);
    EXPECT_THROW(makeClip(folder.file("no/such/a.mp4"), {}), std::runtime_error);
    EXPECT_THROW(makeClip(folder.file("a.mp4"), {.frames = 0}), std::runtime_error);
    EXPECT_THROW(makeClip(folder.file("a.mp4"), {.unknownFirstSound = true}), std::runtime_error);
}

} // namespace
} // namespace anadrome::testing_support
