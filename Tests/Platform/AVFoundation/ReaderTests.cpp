#include "Platform/AVFoundation/AVAssetReader.h"
#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"
#include "Tests/Platform/AVFoundation/PixelNumbers.h"
#include "Tests/Support/SoundMeasure.h"
#include "Tests/Support/ToneTrack.h"

#include <filesystem>
#include <numeric>

namespace anadrome {

using namespace testing_support;

namespace {

const Dictionary pcm16{{AVFormatIDKey, kAudioFormatLinearPCM}, {AVLinearPCMBitDepthKey, 16}};

/// A reader over the tracks of one file, with an output for the first of each kind.
struct OpenClip {
    explicit OpenClip(const std::string& path,
                      OSType format = kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange) {
        asset = AVAsset::assetWithURL(URL::fileURLWithPath(path));
        reader = *AVAssetReader::make(asset);
        for (const auto& track : asset->tracks()) {
            const bool isVideo = track->mediaType() == AVMediaTypeVideo;
            auto& output = isVideo ? video : audio;
            if (output)
                continue;
            output = std::make_shared<AVAssetReaderTrackOutput>(
                track, isVideo ? Dictionary{{kCVPixelBufferPixelFormatTypeKey, format}} : pcm16);
            reader->addOutput(output);
        }
    }

    std::shared_ptr<AVAsset> asset;
    std::shared_ptr<AVAssetReader> reader;
    std::shared_ptr<AVAssetReaderTrackOutput> video;
    std::shared_ptr<AVAssetReaderTrackOutput> audio;
};

using ReaderTest = MediaTest;

} // namespace

TEST_F(ReaderTest, GivesEveryFrameInPresentationOrderWithItsExactTime) {
    const struct {
        const char* name;
        ClipOptions options;
    } rows[] = {
        {"b-frames.mp4", {.frames = 40, .gop = 20, .bFrames = 3}},
        {"open.mp4", {.frames = 40, .gop = 12, .bFrames = 2, .openGop = true}},
        {"ntsc.mov", {.frames = 31, .frameRate = {30000, 1001}, .bFrames = 2}},
        {"late.mp4", {.frames = 20, .startSeconds = 10}},
        {"odd.mkv", {.width = 161, .height = 97, .frames = 10, .pixelFormat = "yuv444p"}},
        {"interlaced.mp4", {.frames = 12, .pixelFormat = "yuv422p", .interlaced = true}},
        {"frames.mov", {.frames = 8, .videoCodec = "prores_ks", .pixelFormat = "yuv422p10le"}},
        {"pictures.avi", {.frames = 8, .videoCodec = "mjpeg", .pixelFormat = "yuvj420p"}},
        {"broadcast.ts", {.frames = 25, .frameRate = {25, 1}, .bFrames = 2}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OpenClip open(clip(row.name, row.options));
        ASSERT_TRUE(open.reader->startReading());
        const double rate = av_q2d(row.options.frameRate);
        int count = 0;
        while (const CMSampleBufferRef sample = open.video->copyNextSampleBuffer()) {
            const double expected = row.options.startSeconds + count / rate;
            ASSERT_NEAR(CMTimeGetSeconds(CMSampleBufferGetPresentationTimeStamp(sample)), expected, 0.001)
                << count;
            ASSERT_EQ(numberIn(CMSampleBufferGetImageBuffer(sample)), count);
            ++count;
        }
        EXPECT_EQ(count, row.options.frames);
        EXPECT_EQ(open.reader->status(), AVAssetReaderStatus::completed);
    }
}

TEST_F(ReaderTest, TenBitClipsKeepTheirTopBitsAndColour) {
    OpenClip open(
        clip(
            "pq.mp4",
            {.frames = 4, .videoCodec = "libx265", .pixelFormat = "yuv420p10le", .colour = ColourPreset::Pq}),
        kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange);
    ASSERT_TRUE(open.reader->startReading());
    const CMSampleBufferRef sample = open.video->copyNextSampleBuffer();
    ASSERT_TRUE(sample);
    EXPECT_EQ(numberIn(CMSampleBufferGetImageBuffer(sample)), 0);
    const Dictionary attachments =
        CVBufferCopyAttachments(CMSampleBufferGetImageBuffer(sample), kCVAttachmentMode_ShouldPropagate);
    ASSERT_TRUE(findString(attachments, kCVImageBufferTransferFunctionKey));
    EXPECT_EQ(*findString(attachments, kCVImageBufferTransferFunctionKey),
              kCVImageBufferTransferFunction_SMPTE_ST_2084_PQ);
}

TEST_F(ReaderTest, FullRangePicturesComeInVideoRange) {
    const auto meanLuma = [&](bool fullRange) {
        OpenClip open(clip("clip.mp4", {.frames = 2, .fullRange = fullRange, .quality = 10}));
        EXPECT_TRUE(open.reader->startReading());
        const auto luma = lumaOf(CMSampleBufferGetImageBuffer(open.video->copyNextSampleBuffer()));
        return std::accumulate(luma.begin(), luma.end(), 0.0) / static_cast<double>(luma.size());
    };
    EXPECT_NEAR(meanLuma(true), meanLuma(false), 1.0);
}

TEST_F(ReaderTest, SoundComesAfterAllPicturesWithoutHoldingThemUp) {
    OpenClip open(clip("both.mov", {.frames = 90, .audioCodec = "pcm_s16be", .audioRate = 32000}));
    ASSERT_TRUE(open.reader->startReading());
    int frames = 0;
    while (open.video->copyNextSampleBuffer())
        ++frames;
    EXPECT_EQ(frames, 90);
    EXPECT_EQ(open.reader->status(), AVAssetReaderStatus::reading);

    Sound sound{.sampleRate = 32000, .channelCount = 2};
    while (const CMSampleBufferRef sample = open.audio->copyNextSampleBuffer()) {
        EXPECT_LE(CMSampleBufferGetNumSamples(sample), 1024);
        const auto bytes = CMSampleBufferGetDataBuffer(sample)->bytes();
        const auto* words = reinterpret_cast<const std::int16_t*>(bytes.data());
        for (std::size_t i = 0; i < bytes.size() / 2; ++i)
            sound.samples.push_back(static_cast<float>(words[i]) / 32768);
    }
    EXPECT_EQ(open.reader->status(), AVAssetReaderStatus::completed);
    EXPECT_NEAR(sound.seconds(), 3.0, 0.001);
    for (int channel = 0; channel < 2; ++channel)
        EXPECT_NEAR(toneIn(sound, channel, 1.2, 0.6).value_or(0), toneFrequency(1, channel, 2), 3);
}

TEST_F(ReaderTest, CancelEndsReadingAtOnce) {
    OpenClip open(clip("long.mp4", {.frames = 300}));
    ASSERT_TRUE(open.reader->startReading());
    ASSERT_TRUE(open.video->copyNextSampleBuffer());
    open.reader->cancelReading();
    EXPECT_EQ(open.reader->status(), AVAssetReaderStatus::cancelled);
    EXPECT_FALSE(open.video->copyNextSampleBuffer());
    EXPECT_FALSE(open.reader->error());
}

TEST_F(ReaderTest, SettingsThatCannotBeMetFailTheStart) {
    OpenClip open(clip("clip.mp4", {.frames = 3}), kCVPixelFormatType_32BGRA);
    EXPECT_FALSE(open.reader->startReading());
    EXPECT_EQ(open.reader->status(), AVAssetReaderStatus::failed);
    EXPECT_TRUE(open.reader->error());
    EXPECT_FALSE(open.video->copyNextSampleBuffer());
}

TEST_F(ReaderTest, ATruncatedFileEndsWithWhatCouldBeDecoded) {
    const std::string path = clip("fragments.mp4", {.frames = 60, .gop = 10, .fragmented = true});
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    OpenClip open(path);
    ASSERT_TRUE(open.reader->startReading());
    int count = 0;
    while (const CMSampleBufferRef sample = open.video->copyNextSampleBuffer())
        ++count;
    EXPECT_GT(count, 5);
    EXPECT_LT(count, 60);
    EXPECT_NE(open.reader->status(), AVAssetReaderStatus::reading);
}

} // namespace anadrome
