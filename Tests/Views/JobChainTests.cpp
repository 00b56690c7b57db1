#include "Models/VideoFileManager.h"
#include "Tests/Views/ScreenTest.h"
#include "Views/Common/ViewHelper.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

/// What one movie is asked to be.
struct Settings {
    long outputType = 0;
    long fileType = 0;
    bool keepsMetadata = false;
    double reverseSpeed = 1;
    double normalSpeed = 1;
};

std::ostream& operator<<(std::ostream& stream, const Settings& settings) {
    return stream << "output type " << settings.outputType << ", file type " << settings.fileType
                  << ", metadata " << settings.keepsMetadata << ", speeds " << settings.reverseSpeed
                  << " and " << settings.normalSpeed;
}

class JobChainTest : public ScreenTest {
protected:
    std::string numberedClip() {
        return clip("clip.mov", {.width = 64,
                                 .height = 48,
                                 .frames = 60,
                                 .frameRate = {30, 1},
                                 .audioCodec = "pcm_s16le",
                                 .audioChannels = 1,
                                 .keyedMetadata = true,
                                 .metadata = {{"com.apple.quicktime.model", "Camera 5"}}});
    }

    void setControls(const Settings& settings) {
        editViews().outputTypeSegmentedControl->tapSegment(1);
        setSpeed(*editViews().reverseSpeedSlider, settings.reverseSpeed);
        setSpeed(*editViews().normalSpeedSlider, settings.normalSpeed);
        editViews().outputTypeSegmentedControl->tapSegment(settings.outputType);
        editViews().fileTypeSegmentedControl->tapSegment(settings.fileType);
        if (editViews().exifSwitch->isOn() != settings.keepsMetadata)
            editViews().exifSwitch->tap();
    }
    /// Taps Create and waits for the Preview screen; the movie that it shows.
    std::string create() {
        m_host.clear();
        editViews().createButton->tap();
        if (!waitFor("push Preview"))
            return "";
        return std::static_pointer_cast<PreviewViewController>(m_stack->topViewController())
            ->compressedVideoUrl()
            ->path();
    }
    void goBack() { m_stack->popViewControllerAnimated(false); }

    static std::size_t workFiles() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(VideoFileManager::videosDirectory().path()), {}));
    }
};

} // namespace

TEST_F(JobChainTest, TheControlsFillInTheRecipe) {
    const auto edit = openEdit(numberedClip());
    std::optional<MovieRecipe> recipe;
    edit->setJobHandler([&](const std::shared_ptr<MovieJob>& job) { recipe = job->recipe(); });
    for (const Settings& settings :
         {Settings{0, 1, false, 2.0, 0.5}, Settings{1, 0, true, 0.4, 3.5}, Settings{2, 1, true, 1, 10}}) {
        SCOPED_TRACE(settings);
        setControls(settings);
        m_host.clear();
        editViews().createButton->tap();
        ASSERT_TRUE(recipe);
        EXPECT_EQ(static_cast<long>(recipe->outputType()), settings.outputType);
        EXPECT_EQ(recipe->fileType(), settings.fileType == 0 ? AVFileTypeQuickTimeMovie : AVFileTypeMPEG4);
        EXPECT_EQ(recipe->keepsMetadata(), settings.keepsMetadata);
        EXPECT_EQ(recipe->reverseSpeed(), settings.reverseSpeed);
        EXPECT_EQ(recipe->normalSpeed(), settings.normalSpeed);
        edit->job()->cancel();
        ASSERT_TRUE(waitFor("no hud"));
    }
}

TEST_F(JobChainTest, ACancelledJobLeadsBackToTheControlsAsTheyWere) {
    const auto edit = openEdit(numberedClip());
    const Settings settings{2, 1, true, 0.4, 3.5};
    setControls(settings);
    for (const float at : {0.1F, 0.4F, 0.6F, 0.9F, 1.0F}) {
        SCOPED_TRACE(at);
        m_host.clear();
        m_host.onProgress = [&](float fraction) {
            if (fraction >= at && edit->job())
                edit->job()->cancel();
        };
        editViews().createButton->tap();
        ASSERT_TRUE(waitUntil([&] { return !edit->job() && !ViewHelper::shared().hud().isVisible(); }));
        m_host.onProgress = {};
        EXPECT_FALSE(dialog());
        EXPECT_FALSE(m_host.tells("push Preview"));
        EXPECT_EQ(editViews().outputTypeSegmentedControl->selectedSegmentIndex(), 2);
        EXPECT_EQ(editViews().reverseSpeedValueLabel->text(), "0.4x");
        EXPECT_TRUE(editViews().exifSwitch->isOn());
    }
    EXPECT_NE(create(), "") << "the next run";
}

TEST_F(JobChainTest, TheUserSeesOneBarThenTheMovie) {
    const auto edit = openEdit(numberedClip());
    const struct {
        Settings settings;
        Story story;
        int stages; ///< with a share of the bar
        std::size_t files;
    } rows[] = {
        {{.outputType = 0}, {"pie", "no hud"}, 2, 2},
        {{.outputType = 1}, {"pie", "no hud"}, 4, 4},
        {{.outputType = 2, .keepsMetadata = true}, {"pie", "no hud", "ring", "no hud"}, 4, 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.settings);
        VideoFileManager::removeAllWorkFiles();
        setControls(row.settings);
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
        Settings settings;
        float lossAt; ///< what the bar shows when the work files get lost
        float reached;
        Story story;
        const char* message;
    } rows[] = {
        {"reverse", m_folder.file("text.mov"), {}, 2, 0, pie, "Reverse: Failed to init reader"},
        {"speed of the reversed", tiny, {.reverseSpeed = 10}, 2, 0.5F, pie, ""},
        {"compress", source, {.keepsMetadata = true, .reverseSpeed = 0.1}, 0.6F, 1, pieAndRing, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.stage);
        const auto edit = openEdit(row.clip);
        setControls(row.settings);
        m_host.clear();
        m_host.onProgress = [&](float fraction) {
            if (fraction >= row.lossAt)
                VideoFileManager::removeAllWorkFiles();
        };
        editViews().createButton->tap();
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
    editViews().createButton->tap();
    EXPECT_TRUE(waitUntil([&] { return watched.expired() && workFiles() == 0; }))
        << "it takes the work files along";
}

} // namespace anadrome
