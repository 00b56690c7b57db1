#include "Models/FrameStoreSpace.h"
#include "Models/SourceColor.h"
#include "Models/VideoFrameManager.h"
#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVAssetReader.h"
#include "Platform/AVFoundation/AVAssetReaderTrackOutput.h"
#include "Tests/Support/ClipTest.h"

#include <filesystem>

namespace anadrome {

using namespace testing_support;

namespace {

class FrameStoreSpaceTest : public ClipTest {
protected:
    /// Bytes on disk of a clip's first frame, read as a reversal reads it.
    static std::int64_t storedSize(const std::shared_ptr<AVAsset>& asset, const AVAssetTrackRef& track) {
        const OSType format = sourceColor(*track).isHDR ? kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange
                                                        : kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange;
        const auto output = std::make_shared<AVAssetReaderTrackOutput>(
            track, Dictionary{{kCVPixelBufferPixelFormatTypeKey, format}});
        const auto reader = *AVAssetReader::make(asset);
        reader->addOutput(output);
        reader->startReading();
        VideoFrameManager::saveFrame(CMSampleBufferGetImageBuffer(output->copyNextSampleBuffer()), 0);
        reader->cancelReading();
        return static_cast<std::int64_t>(std::filesystem::file_size(
            VideoFrameManager::framesDirectory().appendingPathComponent("frame_0.data").path()));
    }
};

} // namespace

TEST_F(FrameStoreSpaceTest, IsWhatTheFramesTake) {
    constexpr std::int64_t reserve = 32 << 20;
    const struct {
        const char* name;
        ClipOptions options;
    } rows[] = {{"plain.mp4", {.width = 320, .height = 240, .frames = 12}},
                {"odd.mp4", {.width = 161, .height = 91, .frames = 3, .pixelFormat = "yuv444p"}},
                {"hdr.mp4",
                 {.width = 320,
                  .height = 180,
                  .frames = 5,
                  .videoCodec = "libx265",
                  .pixelFormat = "yuv420p10le",
                  .colour = ColourPreset::Hlg}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto asset = AVAsset::assetWithURL(URL::fileURLWithPath(clip(row.name, row.options)));
        const AVAssetTrackRef track = asset->tracksWithMediaType(AVMediaTypeVideo).at(0);
        EXPECT_EQ(rawFrameSize(*track), storedSize(asset, track));
        const FrameStoreSpace space = FrameStoreSpace::measure(*track);
        const std::int64_t movie = space.needed - row.options.frames * rawFrameSize(*track) - reserve;
        EXPECT_GT(movie, 0) << "the reversed movie is written while the frames are there";
        EXPECT_LE(movie, static_cast<std::int64_t>(std::filesystem::file_size(m_folder.file(row.name))));
        EXPECT_EQ(space.fileError, 0);
    }
}

TEST_F(FrameStoreSpaceTest, SufficesUnlessSomethingIsKnownAgainstIt) {
    EXPECT_TRUE((FrameStoreSpace{.needed = 100, .free = 100}.suffices()));
    EXPECT_FALSE((FrameStoreSpace{.needed = 100, .free = 99}.suffices()));
    EXPECT_TRUE((FrameStoreSpace{.needed = 100, .free = std::nullopt}.suffices()));
    EXPECT_FALSE((FrameStoreSpace{.needed = 100, .free = 1000, .fileError = EFBIG}.suffices()));
}

} // namespace anadrome
