// What is shown of the media libraries' own lines.

#include "Platform/AVFoundation/AVAssetReader.h"
#include "Platform/AVFoundation/AVAssetReaderTrackOutput.h"
#include "Platform/AVFoundation/Libav/Log.h"
#include "Platform/Foundation/Print.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"

#include <mutex>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace anadrome {

using namespace testing_support;

namespace {

class LibraryLogTest : public MediaTest {
protected:
    LibraryLogTest() { libav::routeLibraryLog(); }
    ~LibraryLogTest() override { setDebugSink({}); }

    void listen() {
        setDebugSink([this](std::string_view line) {
            const std::lock_guard lock(m_mutex);
            m_lines.emplace_back(line);
        });
    }
    std::vector<std::string> lines() const {
        const std::lock_guard lock(m_mutex);
        return m_lines;
    }

    static int countFrames(const std::shared_ptr<AVAsset>& asset) {
        const auto output = std::make_shared<AVAssetReaderTrackOutput>(
            asset->tracksWithMediaType(AVMediaTypeVideo).at(0),
            Dictionary{{kCVPixelBufferPixelFormatTypeKey, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange}});
        const auto reader = *AVAssetReader::make(asset);
        reader->addOutput(output);
        reader->startReading();
        int count = 0;
        while (output->copyNextSampleBuffer())
            ++count;
        return count;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_lines;
};

} // namespace

TEST_F(LibraryLogTest, FullRangeFramesAreNothingToWarnAbout) {
    const std::shared_ptr<AVAsset> assets[] = {
        makeAsset("h264.mp4", {.frames = 5, .pixelFormat = "yuvj420p"}),
        makeAsset("fields.mp4", {.frames = 5, .pixelFormat = "yuvj422p", .interlaced = true}),
        makeAsset("jpeg.mov", {.frames = 5, .videoCodec = "mjpeg", .pixelFormat = "yuvj444p"})};
    listen();
    for (const auto& asset : assets)
        EXPECT_EQ(countFrames(asset), 5);
    EXPECT_EQ(lines(), std::vector<std::string>());
}

TEST_F(LibraryLogTest, AWarningIsOneLineInOurOwnForm) {
    listen();
    AVCodecContext* decoder = avcodec_alloc_context3(avcodec_find_decoder(AV_CODEC_ID_H264));
    av_log(nullptr, AV_LOG_INFO, "an aside\n");
    av_log(decoder, AV_LOG_WARNING, "one line ");
    av_log(decoder, AV_LOG_WARNING, "in %d pieces\n", 2);
    for (int time = 0; time < 3; ++time)
        av_log(nullptr, AV_LOG_ERROR, "an error that comes again and again\n");
    av_log(nullptr, AV_LOG_WARNING, "deprecated pixel format used, make sure you did set range correctly\n");
    avcodec_free_context(&decoder);
    EXPECT_EQ(lines(), (std::vector<std::string>{"FFmpeg h264: one line in 2 pieces",
                                                 "FFmpeg: an error that comes again and again"}));
}

TEST_F(LibraryLogTest, NothingReachesTheTerminalByItself) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    av_log(nullptr, AV_LOG_FATAL, "a warning\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

} // namespace anadrome
