#include "Platform/AVFoundation/AVAssetImageGenerator.h"
#include "Tests/Platform/AVFoundation/MediaTest.h"
#include "Tests/Support/PictureReading.h"

#include <filesystem>

namespace anadrome {

using namespace testing_support;

namespace {

using AVAssetImageGeneratorTest = MediaTest;

/// The number in a picture.
std::optional<int> numberIn(const CGImage& image) {
    LumaPicture luma{image.width, image.height};
    for (std::size_t i = 0; i < image.pixels.size(); i += 4) {
        const std::uint8_t* pixel = &image.pixels[i];
        const double light = 0.2126 * pixel[0] + 0.7152 * pixel[1] + 0.0722 * pixel[2];
        luma.samples.push_back(static_cast<std::uint8_t>(16 + light * 219 / 255));
    }
    return readFrameNumber(luma);
}

/// The colours at the top left, top right, bottom left and bottom right: R, G, B, Y or something else.
std::string corners(const CGImage& image) {
    std::string found;
    for (const int y : {3, image.height - 4})
        for (const int x : {3, image.width - 4}) {
            const std::uint8_t* pixel = &image.pixels[static_cast<std::size_t>(y) * image.bytesPerRow() +
                                                      static_cast<std::size_t>(x) * 4];
            const int bits = (pixel[0] > 100) + 2 * (pixel[1] > 100) + 4 * (pixel[2] > 100);
            found += "-RGYB---"[bits];
        }
    return found;
}

} // namespace

TEST_F(AVAssetImageGeneratorTest, TakesThePictureAtTheTimeUprightAndFitted) {
    const ClipOptions upright{.width = 320, .height = 240, .frames = 60, .gop = 20, .bFrames = 2};
    ClipOptions turned = upright;
    turned.orientation = Orientation::Rotate90;
    ClipOptions wide = upright;
    wide.pixelAspect = {2, 1};
    ClipOptions hdr = upright;
    hdr.videoCodec = "libx265";
    hdr.pixelFormat = "yuv420p10le";
    hdr.colour = ColourPreset::Pq;
    const struct {
        const char* name;
        ClipOptions options;
        int width, height;
        const char* corners;
    } cases[]{{"upright.mp4", upright, 160, 120, "RGBY"},
              {"turned.mov", turned, 120, 160, "BRYG"},
              {"wide.mp4", wide, 160, 60, "RGBY"},
              {"hdr.mp4", hdr, 160, 120, "RGBY"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AVAssetImageGenerator generator(makeAsset(c.name, c.options));
        generator.setAppliesPreferredTrackTransform(true);
        generator.setMaximumSize({160, 160});
        generator.setRequestedTimeToleranceBefore(kCMTimeZero);
        const std::pair<CMTime, int> times[]{
            {kCMTimeZero, 0}, {CMTimeMake(37, 30), 37}, {CMTimeMake(75, 60), 37}, {CMTimeMake(10, 1), 59}};
        for (const auto& [time, number] : times) {
            auto image = generator.copyCGImageAtTime(time);
            ASSERT_TRUE(image) << image.error().description();
            EXPECT_EQ(image->width, c.width);
            EXPECT_EQ(image->height, c.height);
            EXPECT_EQ(corners(*image), c.corners);
            EXPECT_EQ(numberIn(*image), number);
        }
    }
}

TEST_F(AVAssetImageGeneratorTest, ToleranceSavesDecodingUpToTheTime) {
    AVAssetImageGenerator generator(makeAsset("clip.mp4", {.frames = 60, .gop = 20}));
    EXPECT_EQ(numberIn(*generator.copyCGImageAtTime(CMTimeMake(37, 30))), 20);
    generator.setRequestedTimeToleranceBefore(CMTimeMake(5, 30));
    EXPECT_EQ(numberIn(*generator.copyCGImageAtTime(CMTimeMake(37, 30))), 32);
}

TEST_F(AVAssetImageGeneratorTest, WhatHasNoPictureIsAnError) {
    makeClip(path("broken.mp4"), {});
    std::filesystem::resize_file(path("broken.mp4"), 100);
    for (const char* name : {"broken.mp4", "missing.mp4"})
        EXPECT_FALSE(AVAssetImageGenerator(AVAsset::assetWithURL(URL::fileURLWithPath(path(name))))
                         .copyCGImageAtTime(kCMTimeZero))
            << name;
}

} // namespace anadrome
