#include "Models/PixelBufferMetadata.h"
#include "Models/VideoFileManager.h"
#include "Models/VideoFrameManager.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Tests/Support/FileSizeLimit.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <span>

namespace anadrome {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

fs::path frameFile(const std::string& name) {
    return fs::path(VideoFrameManager::framesDirectory().path()) / name;
}

Json readJson(const fs::path& path) {
    std::ifstream file(path);
    return Json::parse(file);
}

/// Every byte counts up, row padding included.
CVPixelBufferRef countingBuffer(std::size_t width, std::size_t height, OSType format) {
    CVPixelBufferRef buffer;
    CVPixelBufferCreate(width, height, format, {}, &buffer);
    CVPixelBufferLockBaseAddress(buffer, 0);
    unsigned char next = 0;
    const auto fill = [&](void* base, std::size_t size) {
        for (unsigned char& byte : std::span(static_cast<unsigned char*>(base), size))
            byte = next++;
    };
    if (CVPixelBufferGetPlaneCount(buffer) == 0)
        fill(CVPixelBufferGetBaseAddress(buffer), CVPixelBufferGetBytesPerRow(buffer) * height);
    for (std::size_t plane = 0; plane < CVPixelBufferGetPlaneCount(buffer); ++plane)
        fill(CVPixelBufferGetBaseAddressOfPlane(buffer, plane),
             CVPixelBufferGetBytesPerRowOfPlane(buffer, plane) *
                 CVPixelBufferGetHeightOfPlane(buffer, plane));
    CVPixelBufferUnlockBaseAddress(buffer, 0);
    return buffer;
}

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

class FrameStoreTest : public ::testing::Test {
protected:
    FrameStoreTest() { VideoFileManager::removeAllWorkFiles(); }
};

} // namespace

TEST_F(FrameStoreTest, AFrameComesBackWithItsSizeFormatAndEveryByte) {
    for (const OSType format :
         {kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange, kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange,
          kCVPixelFormatType_32BGRA}) {
        const CVPixelBufferRef saved = countingBuffer(101, 53, format);
        VideoFrameManager::saveFrame(saved, 7);
        const CVPixelBufferRef loaded = VideoFrameManager::loadFrame(7);
        ASSERT_TRUE(loaded);
        EXPECT_EQ(CVPixelBufferGetWidth(loaded), 101U);
        EXPECT_EQ(CVPixelBufferGetHeight(loaded), 53U);
        EXPECT_EQ(CVPixelBufferGetPixelFormatType(loaded), format);
        VideoFrameManager::saveFrame(loaded, 8);
        const std::string bytes = bytesOf(frameFile("frame_7.data"));
        EXPECT_EQ(bytesOf(frameFile("frame_8.data")), bytes);
        for (std::size_t i = 0; i < bytes.size(); ++i)
            ASSERT_EQ(static_cast<unsigned char>(bytes[i]), i % 256) << i;
    }
}

TEST_F(FrameStoreTest, MetadataHasOnlyTheKeysThatHaveAValue) {
    VideoFrameManager::saveFrame(countingBuffer(64, 32, kCVPixelFormatType_32BGRA), 0);
    EXPECT_EQ(readJson(frameFile("frame_0_metadata.json")), Json({{"width", 64},
                                                                  {"height", 32},
                                                                  {"pixelFormat", 1111970369},
                                                                  {"bytesPerRow", 256},
                                                                  {"planeCount", 0},
                                                                  {"planeInfos", Json::array()}}));
    const CVPixelBufferRef tagged = countingBuffer(1920, 4, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    const Dictionary attachments{{kCVImageBufferColorPrimariesKey, "P3_D65"},
                                 {kCVImageBufferTransferFunctionKey, "ITU_R_709_2"},
                                 {kCVImageBufferChromaLocationTopFieldKey, "Left"}};
    CVBufferSetAttachments(tagged, attachments, kCVAttachmentMode_ShouldPropagate);
    // A value that is no string counts as none.
    CVBufferSetAttachments(tagged, {{kCVImageBufferYCbCrMatrixKey, 5}}, kCVAttachmentMode_ShouldPropagate);
    CVBufferSetAttachments(tagged, {{kCVImageBufferChromaLocationBottomFieldKey, "Left"}},
                           kCVAttachmentMode_ShouldNotPropagate);
    VideoFrameManager::saveFrame(tagged, 1);
    Json full = readJson(frameFile("frame_1_metadata.json"));
    const Json expected{
        {"width", 1920},
        {"height", 4},
        {"pixelFormat", 875704438},
        {"bytesPerRow", full.at("bytesPerRow")},
        {"planeCount", 2},
        {"planeInfos", {{{"bytesPerRow", 1920}, {"height", 4}}, {{"bytesPerRow", 1920}, {"height", 2}}}},
        {"colorPrimaries", "P3_D65"},
        {"colorSpace", "P3_D65"},
        {"transferFunction", "ITU_R_709_2"},
        {"chromaLocationTopField", "Left"}};
    EXPECT_EQ(full, expected);
    full.erase("colorSpace"); // which isn't needed
    std::ofstream(frameFile("frame_1_metadata.json")) << full;
    EXPECT_EQ(CVBufferCopyAttachments(VideoFrameManager::loadFrame(1), kCVAttachmentMode_ShouldPropagate),
              attachments);
}

TEST_F(FrameStoreTest, WhatIsNotThereWholeGivesNothing) {
    EXPECT_FALSE(VideoFrameManager::loadFrame(3));
    EXPECT_TRUE(fs::is_empty(VideoFrameManager::framesDirectory().path()));

    const CVPixelBufferRef frame = countingBuffer(16, 16, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    VideoFrameManager::saveFrame(frame, 0);
    fs::remove(frameFile("frame_0.data"));
    EXPECT_FALSE(VideoFrameManager::loadFrame(0));

    VideoFrameManager::saveFrame(frame, 1);
    const std::string whole = readJson(frameFile("frame_1_metadata.json")).dump();
    Json lacking = Json::parse(whole);
    lacking.erase("planeCount");
    for (const std::string& text : {whole.substr(0, whole.size() / 2), std::string(), lacking.dump()}) {
        std::ofstream(frameFile("frame_1_metadata.json")) << text;
        EXPECT_FALSE(VideoFrameManager::loadFrame(1)) << text;
    }
}

TEST_F(FrameStoreTest, TheFirstReasonForAMissingFrameIsKeptUntilTheNextRun) {
    const CVPixelBufferRef frame = countingBuffer(64, 48, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    VideoFrameManager::saveFrame(frame, 0);
    EXPECT_FALSE(VideoFrameManager::saveError());
    {
        const testing_support::FileSizeLimit full(2000);
        VideoFrameManager::saveFrame(frame, 1);
    }
    VideoFrameManager::saveFrame(frame, 2);
    const std::optional<NSError> error = VideoFrameManager::saveError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code(), NSFileWriteOutOfSpaceError) << error->description();
    EXPECT_FALSE(VideoFrameManager::loadFrame(1));
    EXPECT_TRUE(VideoFrameManager::loadFrame(2));
    VideoFrameManager::saveFrame(frame, 0);
    EXPECT_FALSE(VideoFrameManager::saveError()) << "another run has begun";
}

TEST_F(FrameStoreTest, DataShorterThanItsMetadataIsFatal) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            VideoFrameManager::saveFrame(countingBuffer(16, 16, kCVPixelFormatType_32BGRA), 0);
            fs::resize_file(frameFile("frame_0.data"), 100);
            VideoFrameManager::loadFrame(0);
        },
        "shorter than its metadata");
}

TEST_F(FrameStoreTest, TheSweepTakesTheWholeTemporaryDirectory) {
    const fs::path temporary = NSFileManager::defaultManager().temporaryDirectory().path();
    const URL videos = VideoFileManager::videosDirectory();
    std::ofstream(fs::path(videos.path()) / "work.mov") << "x";
    std::ofstream(temporary / "somebody-elses") << "x";
    VideoFrameManager::saveFrame(countingBuffer(16, 16, kCVPixelFormatType_32BGRA), 0);
    VideoFileManager::removeAllWorkFiles();
    EXPECT_TRUE(fs::is_empty(temporary));
    EXPECT_TRUE(fs::is_directory(VideoFileManager::videosDirectory().path()));
}

} // namespace anadrome
