#include "Models/PixelBufferMetadata.h"
#include "Models/VideoFileManager.h"
#include "Models/VideoFrameManager.h"
#include "Platform/Foundation/NSFileManager.h"

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

/// Calls take(bytes) for each plane, row padding included, or for the picture that has none.
template <typename Take>
void forEachPlane(const CVPixelBufferRef& buffer, Take take) {
    CVPixelBufferLockBaseAddress(buffer, 0);
    const auto bytes = [](void* base, std::size_t size) {
        return std::span(static_cast<unsigned char*>(base), size);
    };
    if (CVPixelBufferGetPlaneCount(buffer) == 0)
        take(bytes(CVPixelBufferGetBaseAddress(buffer),
                   CVPixelBufferGetBytesPerRow(buffer) * CVPixelBufferGetHeight(buffer)));
    for (std::size_t plane = 0; plane < CVPixelBufferGetPlaneCount(buffer); ++plane)
        take(bytes(CVPixelBufferGetBaseAddressOfPlane(buffer, plane),
                   CVPixelBufferGetBytesPerRowOfPlane(buffer, plane) *
                       CVPixelBufferGetHeightOfPlane(buffer, plane)));
    CVPixelBufferUnlockBaseAddress(buffer, 0);
}

/// Every byte counts up.
CVPixelBufferRef countingBuffer(std::size_t width, std::size_t height, OSType format) {
    CVPixelBufferRef buffer;
    CVPixelBufferCreate(width, height, format, {}, &buffer);
    unsigned char next = 0;
    forEachPlane(buffer, [&](auto bytes) {
        for (unsigned char& byte : bytes)
            byte = next++;
    });
    return buffer;
}

std::string bytesOf(const CVPixelBufferRef& buffer) {
    std::string all;
    forEachPlane(buffer, [&](auto bytes) { all.append(bytes.begin(), bytes.end()); });
    return all;
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
        EXPECT_EQ(bytesOf(loaded), bytesOf(saved));
        EXPECT_EQ(fs::file_size(frameFile("frame_7.data")), bytesOf(saved).size());
    }
}

TEST_F(FrameStoreTest, MetadataHasOnlyTheKeysThatHaveAValue) {
    VideoFrameManager::saveFrame(countingBuffer(64, 32, kCVPixelFormatType_32BGRA), 0);
    const Json bare = readJson(frameFile("frame_0_metadata.json"));
    EXPECT_EQ(bare, Json({{"width", 64},
                          {"height", 32},
                          {"pixelFormat", 1111970369},
                          {"bytesPerRow", 256},
                          {"planeCount", 0},
                          {"planeInfos", Json::array()}}));

    const CVPixelBufferRef tagged = countingBuffer(1920, 4, kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    CVBufferSetAttachments(tagged,
                           {{kCVImageBufferColorPrimariesKey, "P3_D65"},
                            {kCVImageBufferTransferFunctionKey, "ITU_R_709_2"},
                            {kCVImageBufferYCbCrMatrixKey, 5},
                            {kCVImageBufferChromaLocationTopFieldKey, "Left"}},
                           kCVAttachmentMode_ShouldPropagate);
    CVBufferSetAttachments(tagged, {{kCVImageBufferChromaLocationBottomFieldKey, "Left"}},
                           kCVAttachmentMode_ShouldNotPropagate);
    VideoFrameManager::saveFrame(tagged, 1);
    const Json full = readJson(frameFile("frame_1_metadata.json"));
    EXPECT_EQ(full.at("pixelFormat"), 875704438);
    EXPECT_EQ(full.at("planeInfos"),
              Json({{{"bytesPerRow", 1920}, {"height", 4}}, {{"bytesPerRow", 1920}, {"height", 2}}}));
    EXPECT_EQ(full.at("colorPrimaries"), "P3_D65");
    EXPECT_EQ(full.at("colorSpace"), full.at("colorPrimaries"));
    EXPECT_EQ(full.at("transferFunction"), "ITU_R_709_2");
    EXPECT_EQ(full.at("chromaLocationTopField"), "Left");
    EXPECT_FALSE(full.contains("yCbCrMatrix")) << "a value that is no string counts as none";
    EXPECT_FALSE(full.contains("chromaLocationBottomField")) << "it isn't to be propagated";
}

TEST_F(FrameStoreTest, AttachmentsComeBackAndColorSpaceIsNotNeeded) {
    const CVPixelBufferRef saved = countingBuffer(32, 32, kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange);
    const Dictionary attachments{{kCVImageBufferColorPrimariesKey, "ITU_R_2020"},
                                 {kCVImageBufferTransferFunctionKey, "ITU_R_2100_HLG"},
                                 {kCVImageBufferYCbCrMatrixKey, "ITU_R_2020"},
                                 {kCVImageBufferChromaLocationTopFieldKey, "TopLeft"},
                                 {kCVImageBufferChromaLocationBottomFieldKey, "TopLeft"}};
    CVBufferSetAttachments(saved, attachments, kCVAttachmentMode_ShouldPropagate);
    VideoFrameManager::saveFrame(saved, 0);
    Json json = readJson(frameFile("frame_0_metadata.json"));
    json.erase("colorSpace");
    std::ofstream(frameFile("frame_0_metadata.json")) << json;
    EXPECT_EQ(CVBufferCopyAttachments(VideoFrameManager::loadFrame(0), kCVAttachmentMode_ShouldPropagate),
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

TEST_F(FrameStoreTest, TheFolderComesBackAndIsEmptiedWhateverIsInIt) {
    const URL folder = VideoFrameManager::framesDirectory();
    fs::remove_all(folder.path());
    VideoFrameManager::saveFrame(countingBuffer(16, 16, kCVPixelFormatType_32BGRA), 0);
    EXPECT_TRUE(VideoFrameManager::loadFrame(0));
    VideoFrameManager::saveFrame(countingBuffer(32, 16, kCVPixelFormatType_32BGRA), 0);
    EXPECT_EQ(CVPixelBufferGetWidth(VideoFrameManager::loadFrame(0)), 32U);
    fs::create_directories(fs::path(folder.path()) / "sub" / "deeper");
    VideoFrameManager::removeAllFrames();
    EXPECT_TRUE(fs::is_directory(folder.path()));
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(FrameStoreTest, TheSweepTakesTheWholeTemporaryDirectory) {
    const fs::path temporary = NSFileManager::defaultManager().temporaryDirectory().path();
    const URL videos = VideoFileManager::videosDirectory();
    EXPECT_EQ(fs::path(videos.path()), temporary / "Videos");
    std::ofstream(fs::path(videos.path()) / "work.mov") << "x";
    std::ofstream(temporary / "somebody-elses") << "x";
    VideoFrameManager::saveFrame(countingBuffer(16, 16, kCVPixelFormatType_32BGRA), 0);
    VideoFileManager::removeAllWorkFiles();
    EXPECT_TRUE(fs::is_empty(temporary));
    EXPECT_EQ(VideoFileManager::videosDirectory(), videos);
    EXPECT_TRUE(fs::is_directory(videos.path()));
}

} // namespace anadrome
