#include "CommandRunner.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/RealClips.h"
#include "Tests/Support/ScratchFolder.h"

#include <array>
#include <gtest/gtest.h>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

/// The terms of the display matrix that turn the picture; files carry wrong translations.
std::array<std::int32_t, 4> turnOf(const VideoFacts& video) {
    if (!video.displayMatrix)
        return {1 << 16, 0, 0, 1 << 16};
    const DisplayMatrix& m = *video.displayMatrix;
    return {m[0], m[1], m[3], m[4]};
}

void expectMirrored(const std::string& source, const std::string& output) {
    const MovieFacts in = readMovie(source);
    const MovieFacts out = readMovie(output);
    const VideoFacts& before = in.video.at(0);
    const VideoFacts& after = out.video.at(0);
    ASSERT_EQ(after.frames.size(), before.frames.size());
    for (std::size_t i = 0; i < after.frames.size(); ++i)
        ASSERT_NEAR(after.frames[i].seconds, before.frames[i].seconds, 1e-5) << i;
    EXPECT_EQ(after.codecTag, "hvc1");
    EXPECT_EQ(turnOf(after), turnOf(before));
    EXPECT_EQ(after.decodeErrors, 0);
    for (std::size_t i = 0; i < after.frames.size(); ++i)
        ASSERT_NEAR(after.frames[i].meanLuma, before.frames[before.frames.size() - 1 - i].meanLuma, 1.0) << i;
    EXPECT_GT(reversedPsnr(source, output).value_or(100), 28) << "compared where sizes are the same";
}

void expectPlayable(const std::string& movie) {
    const MovieFacts facts = readMovie(movie);
    const VideoFacts& video = facts.video.at(0);
    EXPECT_EQ(video.decodeErrors, 0);
    EXPECT_GT(video.frames.size(), 0U);
    EXPECT_EQ(static_cast<std::int64_t>(video.frames.size()), video.frameCount);
    EXPECT_NEAR(video.durationSeconds, static_cast<double>(video.frames.size()) / 30, 1e-3);
    for (const SoundFacts& sound : facts.sound)
        EXPECT_EQ(sound.decodeErrors, 0);
}

bool isOneLine(const std::string& text) {
    return text.size() > 1 && text.find('\n') == text.size() - 1;
}

} // namespace

TEST(RealClips, EachReversesFrameByFrameOrEndsWithAMessage) {
    const std::vector<fs::path> clips = shortRealClips();
    if (clips.empty())
        GTEST_SKIP() << "no clips in " << realClipsFolder();
    const ScratchFolder folder;
    int reversed = 0;
    for (const fs::path& clip : clips) {
        SCOPED_TRACE(clip.filename().string());
        const std::string movie = folder.file("movie.mov");
        const CommandResult result =
            runCli({"reverse", clip, "-o", movie, "--force"}, {.cache = folder.path() / "cache"});
        if (result.exitCode == 0) {
            ++reversed;
            expectMirrored(clip, movie);
        } else {
            EXPECT_EQ(result.exitCode, 1);
            EXPECT_TRUE(result.err.starts_with("Reverse: ") || result.err.starts_with("Failed to "))
                << result.err;
        }
    }
    EXPECT_GT(reversed, 0);
}

TEST(RealClips, EachMakesAPlayableMovieOfEveryKindOrEndsWithAMessage) {
    const std::vector<fs::path> clips = shortRealClips();
    if (clips.empty())
        GTEST_SKIP() << "no clips in " << realClipsFolder();
    const ScratchFolder folder;
    const fs::path cache = folder.path() / "cache";
    for (const fs::path& clip : clips)
        for (const char* kind : {"reverse", "reverse-forward", "forward-reverse"}) {
            SCOPED_TRACE(clip.filename().string() + ", " + kind);
            const std::string movie = folder.file("movie.mp4");
            const CommandResult result = runCli({"make", clip, "-o", movie, "--force", "--output-type", kind,
                                                 "--quality", "low", "--reverse-speed", "2"},
                                                {.cache = cache});
            if (result.exitCode == 0)
                expectPlayable(movie);
            else
                EXPECT_TRUE(result.exitCode == 1 && isOneLine(result.err)) << result.err;
            for (const auto& entry : fs::directory_iterator(cache / "anadrome"))
                EXPECT_EQ(entry.path().filename(), "sweep.lock");
        }
}

} // namespace anadrome
