#include "Platform/AVFoundation/AVAsset.h"
#include "Tests/Models/ExportTest.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/RealClips.h"

#include <cmath>

namespace anadrome {

using namespace testing_support;

namespace {

class RealClipsExportTest : public ExportTest {
protected:
    static double seconds(const std::string& clip) {
        return CMTimeGetSeconds(AVURLAsset(URL::fileURLWithPath(clip)).duration());
    }

    static bool hasPictures(const std::string& clip) {
        return !AVURLAsset(URL::fileURLWithPath(clip)).tracksWithMediaType(AVMediaTypeVideo).empty();
    }
};

void expectWhole(const ExportLog& log, std::size_t frames) {
    ASSERT_TRUE(log.success) << log.message.value_or("");
    const MovieFacts movie = readMovie(log.path);
    EXPECT_EQ(movie.video.at(0).frames.size(), frames);
    EXPECT_EQ(movie.video.at(0).decodeErrors, 0);
}

} // namespace

TEST_F(RealClipsExportTest, EachPassesThroughAllExportsOrEndsWithItsMessage) {
    const auto clips = shortRealClips();
    if (clips.empty())
        GTEST_SKIP() << "no clips in " << realClipsFolder();
    setQuality(0);
    for (const std::string clip : clips) {
        SCOPED_TRACE(clip);
        const auto faster = changeSpeed(clip, 2);
        const auto joined = merge(clip, clip);
        const auto compressed = compress(clip, clip);
        if (!hasPictures(clip)) {
            EXPECT_EQ(faster->message, "Change speed: Failed to load video track");
            EXPECT_EQ(joined->message, "Failed to load first video");
            continue;
        }
        const double duration = seconds(clip);
        expectWhole(*faster, static_cast<std::size_t>(std::lround(30 * std::round(duration / 2 * 10) / 10)));
        expectWhole(*joined, static_cast<std::size_t>(std::lround(30 * 2 * duration)));
        expectWhole(*compressed, readMovie(clip).video.at(0).frames.size());
        for (const auto& log : {faster, joined, compressed})
            std::filesystem::remove(log->path);
    }
}

} // namespace anadrome
