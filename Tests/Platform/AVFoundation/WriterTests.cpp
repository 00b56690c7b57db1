#include "Tests/Platform/AVFoundation/WriterTest.h"
#include "Tests/Support/MovieReader.h"

#include <filesystem>
#include <thread>

namespace anadrome {

using namespace testing_support;

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
    EXPECT_EQ(video.matrix + " " + video.primaries + " " + video.transfer + " " + video.range,
              "bt709 bt709 bt709 tv");
    // The same red has less luma in BT.709.
    EXPECT_NEAR(video.frames[1].meanLuma, 63, 2);
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

TEST_F(WriterTest, CancellingRemovesTheFile) {
    prepare("out.mov");
    start();
    append(kCMTimeZero);
    m_writer->cancelWriting();
    EXPECT_EQ(m_writer->status(), AVAssetWriterStatus::cancelled);
    EXPECT_FALSE(std::filesystem::exists(path("out.mov")));
}

} // namespace anadrome
