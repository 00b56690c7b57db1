#include "Models/VideoFileManager.h"
#include "Platform/AVFoundation/AVAsset.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Views/ScreenTest.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

/// What one movie is asked to be.
struct Wish {
    long outputType = 0;
    long fileType = 0;
    bool keepsMetadata = false;
    double reverseSpeed = 1;
    double normalSpeed = 1;
};

std::ostream& operator<<(std::ostream& stream, const Wish& wish) {
    return stream << "output type " << wish.outputType << ", file type " << wish.fileType << ", metadata "
                  << wish.keepsMetadata << ", speeds " << wish.reverseSpeed << " and " << wish.normalSpeed;
}

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

std::vector<Stretch> stretchesOf(const Wish& wish) {
    const Stretch reversed{true, wish.reverseSpeed};
    const Stretch forward{false, wish.normalSpeed};
    const std::vector<Stretch> kinds[] = {{reversed}, {reversed, forward}, {forward, reversed}};
    return kinds[wish.outputType];
}

class JobChainTest : public ScreenTest {
protected:
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

    void setControls(const Wish& wish) {
        view<UISegmentedControl>("outputTypeSegmentedControl")->tapSegment(1);
        setSpeed(*view<UISlider>("reverseSpeedSlider"), wish.reverseSpeed);
        setSpeed(*view<UISlider>("normalSpeedSlider"), wish.normalSpeed);
        view<UISegmentedControl>("outputTypeSegmentedControl")->tapSegment(wish.outputType);
        view<UISegmentedControl>("fileTypeSegmentedControl")->tapSegment(wish.fileType);
        if (view<UISwitch>("exifSwitch")->isOn() != wish.keepsMetadata)
            view<UISwitch>("exifSwitch")->tap();
    }
    /// Taps Create and waits for the Preview screen; the movie that it shows.
    std::string create() {
        m_host.clear();
        view<UIButton>("createButton")->tap();
        if (!waitFor("push Preview"))
            return "";
        return std::static_pointer_cast<PreviewViewController>(m_stack->topViewController())
            ->compressedVideoUrl()
            ->path();
    }
    void goBack() { m_stack->popViewControllerAnimated(false); }

    static void expectMovie(const std::string& movie, const Wish& wish);
    static bool namesTheCamera(const std::string& movie) {
        return std::ranges::any_of(AVURLAsset(URL::fileURLWithPath(movie)).metadata(),
                                   [](const AVMetadataItem& item) { return item.key().ends_with("model"); });
    }
    static std::size_t workFiles() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(VideoFileManager::videosDirectory().path()), {}));
    }
};

void JobChainTest::expectMovie(const std::string& movie, const Wish& wish) {
    const MovieFacts facts = readMovie(movie);
    EXPECT_EQ(facts.metadata.at("major_brand"), wish.fileType == 0 ? "qt  " : "isom");
    EXPECT_EQ(fs::path(movie).extension(), wish.fileType == 0 ? ".mov" : ".mp4");
    EXPECT_EQ(facts.video.at(0).codecTag, "avc1");
    std::vector<std::optional<int>> numbers;
    double start = 0;
    for (const Stretch& stretch : stretchesOf(wish)) {
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
    EXPECT_EQ(namesTheCamera(movie), wish.keepsMetadata);
}

} // namespace

TEST_F(JobChainTest, EverySettingMakesItsMovieFrameByFrameAndToneByTone) {
    openEdit(numberedClip());
    std::set<std::string> movies;
    std::vector<Wish> wishes;
    for (const long outputType : {0L, 1L, 2L}) {
        for (const long fileType : {0L, 1L})
            for (const bool keepsMetadata : {false, true})
                wishes.push_back({outputType, fileType, keepsMetadata, 2.0, 0.5});
        wishes.push_back({outputType, 0, false, 1.0, 1.0});
        wishes.push_back({outputType, 1, false, 0.4, 3.5});
    }
    for (const Wish& wish : wishes) {
        SCOPED_TRACE(::testing::PrintToString(wish));
        setControls(wish);
        const std::string movie = create();
        EXPECT_TRUE(movies.insert(movie).second) << "each is a new run";
        expectMovie(movie, wish);
        goBack();
    }
}

TEST_F(JobChainTest, TheUserSeesOneBarThenTheMovie) {
    const auto edit = openEdit(numberedClip());
    const struct {
        Wish wish;
        Story story;
        int stages; ///< with a share of the bar
        std::size_t files;
    } rows[] = {
        {{.outputType = 0}, {"pie", "no hud"}, 2, 2},
        {{.outputType = 1}, {"pie", "no hud"}, 4, 4},
        {{.outputType = 2, .keepsMetadata = true}, {"pie", "no hud", "ring", "no hud"}, 4, 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.wish);
        VideoFileManager::removeAllWorkFiles();
        setControls(row.wish);
        EXPECT_NE(create(), "");
        Story expected = row.story;
        expected.insert(expected.end(), {"event ad_not_ready_compress", "push Preview"});
        EXPECT_EQ(m_host.story(), expected);
        EXPECT_TRUE(std::ranges::is_sorted(m_host.percents));
        EXPECT_EQ(m_host.percents.front(), 0.0F);
        for (int stage = 1; stage <= row.stages; ++stage)
            EXPECT_GT(std::ranges::count(m_host.percents, static_cast<float>(stage) / row.stages), 0)
                << "stage " << stage << " ends there";
        EXPECT_EQ(m_host.percents.back(), 1.0F);
        EXPECT_EQ(m_host.lines(), Story()) << "there is no ad server to speak of";
        EXPECT_EQ(workFiles(), row.files) << "each stage writes one, and none is removed";
        EXPECT_EQ(edit->player()->rate(), 0.0F);
        goBack();
    }
}

TEST_F(JobChainTest, AStageThatFailsEndsTheRunWithItsMessageAndTheNextRunSucceeds) {
    const std::string source = numberedClip();
    const std::string tiny = clip("tiny.mov", {.width = 64, .height = 48, .frames = 10});
    std::ofstream(m_folder.file("text.mov")) << "this is no movie";
    const Story pie{"pie", "no hud"};
    const Story pieAndRing{"pie", "no hud", "ring", "no hud"};
    const struct {
        const char* stage;
        std::string clip;
        Wish wish;
        float lossAt; ///< what the bar shows when the work files get lost
        float reached;
        Story story;
        const char* message;
    } rows[] = {
        {"reverse", m_folder.file("text.mov"), {}, 2, 0, pie, "Reverse: Failed to init reader"},
        {"speed of the reversed", tiny, {.reverseSpeed = 10}, 2, 0.5F, pie, ""},
        {"speed of the clip", tiny, {.outputType = 1, .normalSpeed = 10}, 2, 0.5F, pie, ""},
        {"merge", source, {.outputType = 1, .normalSpeed = 0.1}, 0.51F, 0.75F, pie, ""},
        {"compress", source, {.keepsMetadata = true}, 1, 1, pieAndRing, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.stage);
        const auto edit = openEdit(row.clip);
        setControls(row.wish);
        m_host.clear();
        m_host.onProgress = [&](float fraction) {
            if (fraction >= row.lossAt)
                VideoFileManager::removeAllWorkFiles();
        };
        view<UIButton>("createButton")->tap();
        ASSERT_TRUE(waitUntil([&] { return dialog() || m_host.tells("push Preview"); }));
        m_host.onProgress = {};
        ASSERT_TRUE(dialog());
        const std::string message = dialog()->message();
        EXPECT_FALSE(message.empty());
        EXPECT_TRUE(message.starts_with(row.message)) << message;
        Story expected = row.story;
        expected.push_back("dialog " + message);
        EXPECT_EQ(m_host.story(), expected);
        EXPECT_NEAR(m_host.percents.back(), row.reached, 0.03) << "the bar stays where the stage began";
        EXPECT_EQ(edit->outputUrlForPreview(), std::nullopt);
        EXPECT_EQ(edit->player()->rate(), 0.0F) << "nothing resumes the preview";
        dialog()->chooseAction(0);
        setControls({});
        if (!row.clip.ends_with("text.mov")) {
            EXPECT_NE(create(), "") << "the next run";
        }
        m_stack->popToRootViewControllerAnimated(false);
    }
}

TEST_F(JobChainTest, AScreenThatGoesAwayEndsItsRunSilently) {
    auto edit = openEdit(numberedClip());
    const std::weak_ptr<EditViewController> watched = edit;
    edit.reset();
    setControls({.outputType = 1});
    m_host.clear();
    m_host.onProgress = [&](float fraction) {
        if (fraction > 0 && m_stack->viewControllers().size() > 1)
            goBack();
    };
    view<UIButton>("createButton")->tap();
    EXPECT_TRUE(waitUntil([&] { return watched.expired() && workFiles() == 0; }))
        << "it takes the work files along";
}

} // namespace anadrome
