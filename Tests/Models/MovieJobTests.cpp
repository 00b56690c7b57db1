#include "Models/MovieJob.h"

#include "Models/VideoFileManager.h"
#include "Models/VideoFrameManager.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/MovieReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <set>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int frameCount = 60;
constexpr int frameRate = 30;
constexpr double seconds = 2;

/// The pitch of the clip's only channel in its first and in its second second.
constexpr std::array pitches{300.0, 400.0};

/// A stretch of a movie: the clip in one direction at a speed.
struct Stretch {
    bool isReversed;
    double speed;

    int frames() const { return 3 * static_cast<int>(std::lround(seconds / speed * 10)); }
    double length() const { return static_cast<double>(frames()) / frameRate; }
    int numberAt(int frame) const {
        const int index = frame * frameCount / frames();
        return isReversed ? frameCount - 1 - index : index;
    }
    /// The sound is stretched with the picture, whose length is whole tenths of a second.
    double pitchAt(double part) const {
        return pitches[(part < 0.5) == isReversed ? 1 : 0] * seconds / length();
    }
};

std::vector<Stretch> stretchesOf(const MovieRecipe& recipe) {
    const Stretch reversed{true, recipe.reverseSpeed()};
    const Stretch forward{false, recipe.normalSpeed()};
    const std::vector<Stretch> kinds[] = {{reversed}, {reversed, forward}, {forward, reversed}};
    return kinds[static_cast<int>(recipe.outputType())];
}

MovieRecipe recipe(const MovieRecipe::Choices& choices = {}) {
    return *MovieRecipe::make(choices);
}

/// Keeps what a job reports.
struct Log : MovieJob::Observer {
    std::vector<MovieJob::Stage> stages;
    std::vector<float> fractions;
    std::optional<MovieJob::Outcome> outcome;
    Clock::time_point endedAt;
    std::function<void(float)> onProgress;

    void jobBeganStage(const MovieJob&, MovieJob::Stage stage) override { stages.push_back(stage); }
    void jobProgressed(const MovieJob& job) override {
        fractions.push_back(job.fraction());
        if (onProgress)
            onProgress(job.fraction());
    }
    void jobEnded(const MovieJob& job, const MovieJob::Outcome& end) override {
        EXPECT_FALSE(job.isRunning());
        EXPECT_FALSE(outcome) << "a job ends once";
        outcome = end;
        endedAt = Clock::now();
    }

    const MovieJob::Movie* movie() const {
        return outcome ? std::get_if<MovieJob::Movie>(&*outcome) : nullptr;
    }
    const MovieJob::Failure* failure() const {
        return outcome ? std::get_if<MovieJob::Failure>(&*outcome) : nullptr;
    }
    bool isCancelled() const { return outcome && std::holds_alternative<MovieJob::Cancelled>(*outcome); }
};

class MovieJobTest : public ClipTest {
protected:
    MovieJobTest() {
        NSUserDefaults::standardUserDefaults().keepInMemory();
        NSUserDefaults::standardUserDefaults().setInteger(1, "resolutionIndexKey");
        VideoFileManager::removeAllWorkFiles();
    }

    std::string numberedClip() {
        return clip("clip.mov", {.width = 64,
                                 .height = 48,
                                 .frames = frameCount,
                                 .frameRate = {frameRate, 1},
                                 .audioCodec = "pcm_s16le",
                                 .audioChannels = 1,
                                 .keyedMetadata = true,
                                 .metadata = {{"com.apple.quicktime.model", "Camera 5"}}});
    }

    struct Run {
        std::shared_ptr<MovieJob> job;
        std::shared_ptr<Log> log = std::make_shared<Log>();

        bool wait() const {
            return runEventLoopUntil([this] { return log->outcome.has_value(); });
        }
    };
    static Run start(const MovieRecipe& recipe, const std::string& clip) {
        Run run{MovieJob::make(recipe, URL::fileURLWithPath(clip))};
        run.job->addObserver(run.log);
        run.job->start();
        return run;
    }
    /// Runs a job to its end.
    static std::shared_ptr<Log> make(const MovieRecipe& recipe, const std::string& clip) {
        const Run run = start(recipe, clip);
        EXPECT_TRUE(run.wait());
        return run.log;
    }

    static void expectMovie(const std::string& movie, const MovieRecipe& recipe);
    static bool namesTheCamera(const std::string& movie) {
        return std::ranges::any_of(AVURLAsset(URL::fileURLWithPath(movie)).metadata(),
                                   [](const AVMetadataItem& item) { return item.key().ends_with("model"); });
    }
    static std::size_t filesIn(const URL& folder) {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), {}));
    }
    static std::size_t workFiles() { return filesIn(VideoFileManager::videosDirectory()); }
    static std::size_t frameFiles() { return filesIn(VideoFrameManager::framesDirectory()); }
};

void MovieJobTest::expectMovie(const std::string& movie, const MovieRecipe& recipe) {
    const bool isQuickTime = recipe.fileType() == AVFileTypeQuickTimeMovie;
    const MovieFacts facts = readMovie(movie);
    EXPECT_EQ(facts.metadata.at("major_brand"), isQuickTime ? "qt  " : "isom");
    EXPECT_EQ(fs::path(movie).extension(), isQuickTime ? ".mov" : ".mp4");
    EXPECT_EQ(facts.video.at(0).codecTag, "avc1");
    std::vector<std::optional<int>> numbers;
    double start = 0;
    for (const Stretch& stretch : stretchesOf(recipe)) {
        for (int frame = 0; frame < stretch.frames(); ++frame)
            numbers.push_back(stretch.numberAt(frame));
        for (const double part : {0.25, 0.75}) {
            const double window = stretch.length() * 0.3;
            const auto pitch =
                toneIn(facts.sound.at(0).sound, 0, start + stretch.length() * part - window / 2, window);
            EXPECT_NEAR(pitch.value_or(0), stretch.pitchAt(part), stretch.pitchAt(part) * 0.03)
                << "at " << part << " of the stretch from " << start;
        }
        start += stretch.length();
    }
    EXPECT_EQ(facts.video.at(0).numbers(), numbers);
    EXPECT_NEAR(facts.video.at(0).durationSeconds, start, 1e-6);
    EXPECT_NEAR(facts.sound.at(0).durationSeconds, start, 0.05);
    EXPECT_EQ(namesTheCamera(movie), recipe.keepsMetadata());
}

std::size_t openFiles() {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

constexpr OutputType outputTypes[] = {OutputType::reversed, OutputType::reversedThenForward,
                                      OutputType::forwardThenReversed};

} // namespace

class MovieJobTable : public MovieJobTest, public ::testing::WithParamInterface<MovieRecipe> {};

TEST_P(MovieJobTable, TheMovieIsRightFrameByFrameAndToneByTone) {
    const auto log = make(GetParam(), numberedClip());
    ASSERT_TRUE(log->movie());
    expectMovie(log->movie()->url.path(), GetParam());
    std::int64_t frames = 0;
    for (const Stretch& stretch : stretchesOf(GetParam()))
        frames += stretch.frames();
    EXPECT_EQ(log->movie()->frames, frames);
    EXPECT_EQ(log->movie()->missingFrames, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryRecipe, MovieJobTable, ::testing::ValuesIn([] {
                             std::vector<MovieRecipe> recipes;
                             for (const OutputType type : outputTypes) {
                                 for (const auto fileType : {AVFileTypeQuickTimeMovie, AVFileTypeMPEG4})
                                     for (const auto metadata : {ClipMetadata::drop, ClipMetadata::keep})
                                         recipes.push_back(recipe({type, 2.0, 0.5, fileType, metadata}));
                                 recipes.push_back(recipe({.outputType = type}));
                                 recipes.push_back(recipe({type, 0.4, 3.5, AVFileTypeMPEG4}));
                             }
                             return recipes;
                         }()));

TEST_F(MovieJobTest, StagesRunInOrderUnderOneBarAndKeepTheirFiles) {
    using enum MovieJob::Stage;
    const std::string source = numberedClip();
    const struct {
        MovieRecipe recipe;
        std::vector<MovieJob::Stage> stages;
        int shares; ///< stages that move the bar
    } rows[] = {
        {recipe(), {reverse, reverseSpeedChange}, 2},
        {recipe({.outputType = OutputType::reversedThenForward}),
         {reverse, reverseSpeedChange, normalSpeedChange, merge},
         4},
        {recipe({.outputType = OutputType::forwardThenReversed, .metadata = ClipMetadata::keep}),
         {reverse, reverseSpeedChange, normalSpeedChange, merge, compress},
         4},
        {MovieRecipe::reversalOnly(AVFileTypeMPEG4), {reverse}, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.recipe);
        VideoFileManager::removeAllWorkFiles();
        const auto log = make(row.recipe, source);
        ASSERT_TRUE(log->movie());
        EXPECT_EQ(log->stages, row.stages);
        EXPECT_TRUE(std::ranges::is_sorted(log->fractions));
        EXPECT_GT(log->fractions.back(), 0.98F);
        for (int stage = 1; stage < row.shares; ++stage)
            EXPECT_GT(std::ranges::count(log->fractions, static_cast<float>(stage) / row.shares), 0)
                << "stage " << stage << " ends there";
        EXPECT_EQ(workFiles(), row.stages.size()) << "each stage writes one, and none is removed";
        EXPECT_EQ(frameFiles(), 0U);
    }
}

TEST_F(MovieJobTest, AReversalAloneKeepsTheClipsSizeTimesAndFrames) {
    const std::string source =
        clip("uneven.mov", {.width = 98, .height = 66, .frames = 23, .frameTicks = {20, 7, 41}});
    const auto log = make(MovieRecipe::reversalOnly(AVFileTypeMPEG4), source);
    ASSERT_TRUE(log->movie());
    const VideoFacts in = readMovie(source).video.at(0);
    const VideoFacts out = readMovie(log->movie()->url.path()).video.at(0);
    EXPECT_EQ(out.codecTag, "hvc1");
    EXPECT_EQ(out.width, 98);
    auto numbers = in.numbers();
    std::ranges::reverse(numbers);
    EXPECT_EQ(out.numbers(), numbers);
    EXPECT_EQ(log->movie()->frames, 23);
}

TEST_F(MovieJobTest, AStageThatFailsEndsTheRunWithItsMessageAndTheNextRunSucceeds) {
    using enum MovieJob::Stage;
    const std::string source = numberedClip();
    const std::string tiny = clip("tiny.mov", {.width = 64, .height = 48, .frames = 10});
    std::ofstream(m_folder.file("text.mov")) << "this is no movie";
    const MovieRecipe slow = recipe({.outputType = OutputType::reversedThenForward, .normalSpeed = 0.1});
    const struct {
        MovieJob::Stage stage;
        std::string clip;
        MovieRecipe recipe;
        float lossAt; ///< where the bar stands when the work files get lost
        const char* message;
    } rows[] = {
        {reverse, m_folder.file("text.mov"), recipe(), 2, "Reverse: Failed to init reader"},
        {reverseSpeedChange, tiny, recipe({.reverseSpeed = 10}), 2, ""},
        {normalSpeedChange, tiny, recipe({.outputType = OutputType::reversedThenForward, .normalSpeed = 10}),
         2, ""},
        {merge, source, slow, 0.51F, ""},
        {compress, source, recipe({.reverseSpeed = 0.1, .metadata = ClipMetadata::keep}), 0.6F, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.recipe);
        const Run run = start(row.recipe, row.clip);
        run.log->onProgress = [&](float fraction) {
            if (fraction >= row.lossAt)
                VideoFileManager::removeAllWorkFiles();
        };
        ASSERT_TRUE(run.wait());
        ASSERT_TRUE(run.log->failure());
        EXPECT_EQ(run.log->failure()->stage, row.stage);
        EXPECT_FALSE(run.log->failure()->message.empty());
        EXPECT_TRUE(run.log->failure()->message.starts_with(row.message)) << run.log->failure()->message;
        EXPECT_TRUE(make(recipe(), source)->movie()) << "the next run";
    }
}

class MovieJobCancel : public MovieJobTest, public ::testing::WithParamInterface<MovieRecipe> {};

TEST_P(MovieJobCancel, EndsAnyStageAndLeavesNothingBehind) {
    const std::string source = numberedClip();
    const auto begin = Clock::now();
    ASSERT_TRUE(make(GetParam(), source)->movie());
    const std::chrono::duration<double> whole = Clock::now() - begin;
    VideoFileManager::removeAllWorkFiles();
    std::mt19937 random(20261123);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        const Run run = start(GetParam(), source);
        const double share = std::uniform_real_distribution(0.0, 0.95)(random);
        runEventLoopFor(std::chrono::milliseconds(std::lround(whole.count() * share * 1000)));
        const bool wasRunning = run.job->isRunning();
        run.job->cancel();
        ASSERT_TRUE(run.wait());
        if (wasRunning) {
            EXPECT_TRUE(run.log->isCancelled());
            EXPECT_EQ(workFiles(), 0U);
            EXPECT_EQ(frameFiles(), 0U);
        }
        VideoFileManager::removeAllWorkFiles();
    }
    const auto log = make(GetParam(), source);
    ASSERT_TRUE(log->movie()) << "the next run";
    if (!GetParam().isReversalOnly())
        expectMovie(log->movie()->url.path(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    EveryOutputType, MovieJobCancel, ::testing::ValuesIn([] {
        std::vector<MovieRecipe> recipes{MovieRecipe::reversalOnly(AVFileTypeMPEG4)};
        for (const OutputType type : outputTypes)
            recipes.push_back(recipe({type, 0.3, 0.3, AVFileTypeMPEG4, ClipMetadata::keep}));
        return recipes;
    }()));

TEST_F(MovieJobTest, CancelBeforeTheStartAndAfterTheEndIsHarmless) {
    const std::string source = numberedClip();
    const auto job = MovieJob::make(recipe(), URL::fileURLWithPath(source));
    const auto log = std::make_shared<Log>();
    job->addObserver(log);
    job->cancel();
    job->start();
    ASSERT_TRUE(runEventLoopUntil([&] { return log->outcome.has_value(); }));
    EXPECT_TRUE(log->isCancelled());

    const Run run = start(recipe(), source);
    ASSERT_TRUE(run.wait());
    run.job->cancel();
    runEventLoopFor(std::chrono::milliseconds(50));
    ASSERT_TRUE(run.log->movie());
    EXPECT_TRUE(fs::exists(run.log->movie()->url.path())) << "a finished movie stays";
}

TEST_F(MovieJobTest, AJobThatIsDroppedEndsSilentlyAndTakesItsFilesAlong) {
    const std::string source = numberedClip();
    for (const float dropAt : {0.05F, 0.2F, 0.4F, 0.6F, 0.9F}) {
        SCOPED_TRACE(dropAt);
        Run run = start(recipe({.outputType = OutputType::reversedThenForward}), source);
        const std::weak_ptr<MovieJob> watched = run.job;
        run.log->onProgress = [&](float fraction) {
            if (fraction >= dropAt)
                run.job.reset();
        };
        ASSERT_TRUE(runEventLoopUntil([&] { return watched.expired(); }));
        EXPECT_FALSE(run.log->outcome);
        EXPECT_TRUE(runEventLoopUntil([&] { return workFiles() + frameFiles() == 0; }));
    }
}

TEST_F(MovieJobTest, AJobThatFollowsADroppedOneKeepsItsFrames) {
    const std::string source = numberedClip();
    for (int round = 0; round < 30; ++round) {
        SCOPED_TRACE(round);
        {
            const Run dropped = start(recipe(), source);
            runEventLoopFor(std::chrono::milliseconds(round * 3));
        }
        const auto log = make(recipe(), source);
        ASSERT_TRUE(log->movie());
        EXPECT_EQ(log->movie()->missingFrames, 0);
        VideoFileManager::removeAllWorkFiles();
    }
}

TEST_F(MovieJobTest, TwoHundredCancelledJobsLeaveNoFileOpen) {
    const std::string source = numberedClip();
    std::size_t before = 0;
    for (int round = 0; round < 200; ++round) {
        const Run run = start(recipe(), source);
        runEventLoopFor(std::chrono::milliseconds(round % 40));
        run.job->cancel();
        ASSERT_TRUE(run.wait());
        if (round == 20)
            before = openFiles();
    }
    // The threads that were cut short let go of their files a moment later.
    EXPECT_TRUE(runEventLoopUntil([&] { return openFiles() <= before; }))
        << openFiles() << " files open instead of " << before;
}

TEST(MovieRecipeTest, TakesEverySpeedOfTheSlidersAndNoOther) {
    for (const double speed : {0.1, 0.3, 1.0, 2.5, 10.0})
        EXPECT_TRUE(MovieRecipe::make({.reverseSpeed = speed, .normalSpeed = speed})) << speed;
    for (const double speed : {0.0, -1.0, 0.05, 0.25, 10.1, 1e300, std::nan("")}) {
        EXPECT_FALSE(MovieRecipe::make({.reverseSpeed = speed})) << speed;
        EXPECT_FALSE(MovieRecipe::make({.normalSpeed = speed})) << speed;
    }
}

} // namespace anadrome
