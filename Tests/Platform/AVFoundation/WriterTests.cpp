#include "Platform/AVFoundation/AVError.h"
#include "Tests/Platform/AVFoundation/WriterTest.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/ToneTrack.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <thread>

namespace anadrome {

using namespace testing_support;

namespace {

/// A run of 16-bit sound of the project's test tones, without times.
std::vector<CMSampleBufferRef> tones(int rate, int channels, double seconds) {
    CMFormatDescription description;
    description.mediaType = CMMediaType::audio;
    description.audio = {static_cast<double>(rate), kAudioFormatLinearPCM,
                         static_cast<std::uint32_t>(channels), 16, static_cast<std::uint32_t>(channels) * 2};
    const auto format = std::make_shared<const CMFormatDescription>(description);
    ToneTrack track(rate, channels, 0);
    std::vector<CMSampleBufferRef> buffers;
    for (int left = static_cast<int>(seconds * rate); left > 0; left -= 1024) {
        const int count = std::min(left, 1024);
        const std::vector<float> samples = track.next(count);
        auto block = std::make_shared<CMBlockBuffer>(samples.size() * 2);
        auto* words = reinterpret_cast<std::int16_t*>(block->bytes().data());
        for (std::size_t i = 0; i < samples.size(); ++i)
            words[i] = static_cast<std::int16_t>(std::lround(samples[i] * 32767));
        CMSampleBufferRef buffer;
        CMSampleBufferCreate(block, format, count, {}, {}, &buffer);
        buffers.push_back(buffer);
    }
    return buffers;
}

} // namespace

TEST_F(WriterTest, KeepsUnevenTimesAndALateStartToTheTick) {
    const std::int64_t ticks[] = {4000, 4003, 4100, 4101, 4500};
    prepare("out.mov");
    start(CMTimeMake(ticks[0], 1000));
    for (const std::int64_t tick : ticks)
        EXPECT_TRUE(append(CMTimeMake(tick, 1000)));
    ASSERT_EQ(finish(), AVAssetWriterStatus::completed);

    const VideoFacts video = readMovie(path("out.mov")).video.at(0);
    ASSERT_EQ(video.frames.size(), std::size(ticks));
    for (std::size_t i = 0; i < std::size(ticks); ++i)
        EXPECT_NEAR(video.frames[i].seconds, static_cast<double>(ticks[i]) / 1000, 1e-6);
    EXPECT_EQ(video.codecTag, "hvc1");
    // The last picture lasts as long as the one before it.
    EXPECT_NEAR(video.durationSeconds, 0.899, 0.002);
}

TEST_F(WriterTest, TakesEverySizeAndScalesBuffersOfAnother) {
    const struct {
        std::size_t width, height, bufferWidth, bufferHeight;
    } rows[] = {{96, 64, 96, 64}, {97, 65, 97, 65}, {16, 16, 16, 16}, {34, 18, 34, 18}, {192, 64, 96, 64}};
    for (const auto& row : rows) {
        const std::string name = std::to_string(row.width) + "x" + std::to_string(row.height) + ".mov";
        SCOPED_TRACE(name);
        prepare(name, videoSettings(static_cast<double>(row.width), static_cast<double>(row.height)));
        start();
        appendMany(3, plainPicture(row.bufferWidth, row.bufferHeight, 180));
        ASSERT_EQ(finish(), AVAssetWriterStatus::completed) << describe(m_writer->error());
        const VideoFacts video = readMovie(path(name)).video.at(0);
        EXPECT_EQ(video.width, static_cast<int>(row.width + row.width % 2));
        EXPECT_EQ(video.height, static_cast<int>(row.height + row.height % 2));
        ASSERT_EQ(video.frames.size(), 3U);
        EXPECT_NEAR(video.frames[1].meanLuma, 180, 1.5);
    }
}

TEST_F(WriterTest, RefusesSettingsThatNoEncoderMeets) {
    const auto writer =
        *AVAssetWriter::assetWriterWithURL(URL::fileURLWithPath(path("out.mov")), AVFileTypeMPEG4);
    EXPECT_TRUE(writer->canAddInput(AVAssetWriterInput(AVMediaTypeVideo, videoSettings(16, 16))));
    EXPECT_FALSE(writer->canAddInput(AVAssetWriterInput(AVMediaTypeVideo, videoSettings(64, 8))));
    EXPECT_FALSE(writer->canAddInput(AVAssetWriterInput(AVMediaTypeVideo, {{AVVideoCodecKey, "avc1"}})));
    EXPECT_FALSE(
        writer->canAddInput(AVAssetWriterInput(AVMediaTypeAudio, {{AVFormatIDKey, fourCC("mp3 ")}})));
}

TEST_F(WriterTest, ConvertsPicturesToTheColourThatTheMovieIsTaggedWith) {
    Dictionary settings = videoSettings(96, 64);
    settings.emplace(AVVideoColorPropertiesKey,
                     Dictionary{{AVVideoColorPrimariesKey, AVVideoColorPrimaries_ITU_R_709_2},
                                {AVVideoTransferFunctionKey, AVVideoTransferFunction_ITU_R_709_2},
                                {AVVideoYCbCrMatrixKey, AVVideoYCbCrMatrix_ITU_R_709_2}});
    prepare("out.mov", settings);
    start();
    // Pure red of BT.601.
    CVPixelBufferRef red = plainPicture(96, 64, 81, 90, 240);
    CVBufferSetAttachments(red,
                           {{kCVImageBufferColorPrimariesKey, kCVImageBufferColorPrimaries_ITU_R_709_2},
                            {kCVImageBufferTransferFunctionKey, kCVImageBufferTransferFunction_ITU_R_709_2},
                            {kCVImageBufferYCbCrMatrixKey, kCVImageBufferYCbCrMatrix_ITU_R_601_4}},
                           kCVAttachmentMode_ShouldPropagate);
    appendMany(3, red);
    ASSERT_EQ(finish(), AVAssetWriterStatus::completed);
    const VideoFacts video = readMovie(path("out.mov")).video.at(0);
    EXPECT_EQ(video.matrix, "bt709");
    EXPECT_EQ(video.primaries, "bt709");
    EXPECT_EQ(video.transfer, "bt709");
    EXPECT_EQ(video.range, "tv");
    // The same red has less luma in BT.709.
    EXPECT_NEAR(video.frames[1].meanLuma, 63, 2);
}

TEST_F(WriterTest, SoundWithoutTimesIsLaidEndToEndAndStartsOnTime) {
    const struct { int rate, channels; } rows[] = {{48000, 2}, {44100, 1}, {22050, 2}, {48000, 6}};
    for (const auto& row : rows) {
        const std::string name = std::to_string(row.rate) + "-" + std::to_string(row.channels) + ".mov";
        SCOPED_TRACE(name);
        prepare(name, videoSettings(64, 64), true);
        start();
        appendMany(90);
        for (const CMSampleBufferRef& buffer : tones(row.rate, row.channels, 3))
            m_sound->appendSampleBuffer(buffer);
        ASSERT_EQ(finish(), AVAssetWriterStatus::completed) << describe(m_writer->error());

        const MovieFacts movie = readMovie(path(name));
        const SoundFacts& sound = movie.sound.at(0);
        EXPECT_EQ(sound.sampleRate, 44100);
        EXPECT_EQ(sound.channelCount, 2);
        EXPECT_NEAR(sound.sound.firstSampleSeconds, 0, 0.0005);
        EXPECT_NEAR(sound.sound.seconds(), 3, 0.03);
        if (row.channels > 2)
            continue;
        for (int second = 0; second < 3; ++second)
            EXPECT_NEAR(toneIn(sound.sound, 0, second + 0.2, 0.6).value_or(0),
                        toneFrequency(second, 0, row.channels), 4);
        // Half of full scale, whatever the number of channels.
        EXPECT_NEAR(level(sound.sound, 0, 0.5, 2).value_or(-200), -9.0, 0.6);
        // The encoder's warming up isn't heard.
        EXPECT_NEAR(level(sound.sound, 0, 0, 0.05).value_or(-200), -9.0, 1.5);
    }
}

TEST_F(WriterTest, ATrackWithoutSamplesIsNoFailureButAMovieWithoutAnyIs) {
    prepare("silent.mov", videoSettings(64, 64), true);
    start();
    appendMany(5);
    m_sound->markAsFinished();
    EXPECT_EQ(finish(), AVAssetWriterStatus::completed);
    const MovieFacts movie = readMovie(path("silent.mov"));
    EXPECT_EQ(movie.video.at(0).frames.size(), 5U);
    EXPECT_TRUE(movie.sound.empty());

    prepare("nothing.mov");
    start();
    EXPECT_EQ(finish(), AVAssetWriterStatus::failed);
    EXPECT_TRUE(m_writer->error());
}

TEST_F(WriterTest, AnExistingFileStaysAsItIs) {
    std::ofstream(path("out.mov")) << "precious";
    prepare("out.mov");
    EXPECT_FALSE(start());
    EXPECT_EQ(m_writer->status(), AVAssetWriterStatus::failed);
    EXPECT_EQ(m_writer->error()->code(), AVErrorFileAlreadyExists);
    EXPECT_FALSE(append(kCMTimeZero));
    EXPECT_EQ(finish(), AVAssetWriterStatus::failed);
    std::string content;
    std::ifstream(path("out.mov")) >> content;
    EXPECT_EQ(content, "precious");
}

TEST_F(WriterTest, TimesThatDoNotRiseFailTheWriter) {
    for (const CMTime& second : {CMTimeMake(1, 30), kCMTimeInvalid, kCMTimeZero}) {
        prepare(std::to_string(second.value) + "-" + std::to_string(second.flags) + ".mov");
        start();
        EXPECT_TRUE(append(CMTimeMake(1, 30)));
        EXPECT_FALSE(append(second));
        EXPECT_EQ(finish(), AVAssetWriterStatus::failed);
    }
}

TEST_F(WriterTest, AnInputWaitsForTheOtherAndNotForOneThatHasEnded) {
    prepare("out.mov", videoSettings(64, 64), true);
    start();
    int frames = 0;
    const auto feedForAWhile = [&] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
        while (std::chrono::steady_clock::now() < deadline && frames < 300) {
            if (m_video->isReadyForMoreMediaData())
                append(CMTimeMake(frames++, 30));
            else
                std::this_thread::yield();
        }
    };
    feedForAWhile();
    EXPECT_GE(frames, 30);
    EXPECT_LE(frames, 33) << "video ran more than a second ahead of sound that is yet to come";
    m_sound->markAsFinished();
    feedForAWhile();
    EXPECT_GT(frames, 60) << "video still waits for sound that has ended";
    EXPECT_EQ(finish(), AVAssetWriterStatus::completed);
}

TEST_F(WriterTest, TheRequestBlockRunsUntilTheInputIsFinishedAndNeverAfter) {
    prepare("out.mov");
    start();
    const DispatchQueue queue = DispatchQueue::serial("test");
    std::promise<void> fed;
    std::atomic<int> runsAfterEnd = 0;
    int frame = 0;
    bool ended = false;
    m_video->requestMediaDataWhenReadyOnQueue(queue, [&] {
        if (ended)
            ++runsAfterEnd;
        while (frame < 40) {
            if (!m_video->isReadyForMoreMediaData())
                return;
            append(CMTimeMake(frame++, 30));
        }
        m_video->markAsFinished();
        ended = true;
        fed.set_value();
    });
    ASSERT_EQ(fed.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
    EXPECT_EQ(finish(), AVAssetWriterStatus::completed);
    std::promise<void> drained;
    queue.async([&] { drained.set_value(); });
    drained.get_future().wait();
    EXPECT_EQ(runsAfterEnd, 0);
    EXPECT_EQ(readMovie(path("out.mov")).video.at(0).frames.size(), 40U);
}

TEST_F(WriterTest, CancellingRemovesTheFile) {
    prepare("out.mov");
    start();
    append(kCMTimeZero);
    m_writer->cancelWriting();
    EXPECT_EQ(m_writer->status(), AVAssetWriterStatus::cancelled);
    EXPECT_FALSE(std::filesystem::exists(path("out.mov")));
}

} // namespace anadrome
