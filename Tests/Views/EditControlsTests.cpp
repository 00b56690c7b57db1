#include "Platform/UIKit/UITapGestureRecognizer.h"
#include "Tests/Views/ScreenTest.h"
#include "Views/Edit/PlayerView.h"

#include <filesystem>
#include <fstream>

namespace anadrome {

using namespace testing_support;

namespace {

/// So long that no test sees the end of it that doesn't want to.
constexpr float length = 20;

class EditControlsTest : public ScreenTest {
protected:
    std::shared_ptr<EditViewController> open() {
        return openEdit(clip("clip.mp4", {.width = 64, .height = 48, .frames = 100, .frameRate = {5, 1}}));
    }
    void tapPreview() {
        const auto& recognizer = editViews().playerView->gestureRecognizers().at(0);
        std::dynamic_pointer_cast<UITapGestureRecognizer>(recognizer)->tap();
    }
    /// The symbol over the preview, and how visible it is.
    std::pair<std::string, double> icon() const {
        const auto image = editViews().playPauseButtonImageView;
        return {image->image() ? image->image()->systemName() : "", image->alpha()};
    }
    static double seconds(const EditViewController& edit) {
        return CMTimeGetSeconds(edit.player()->currentTime());
    }
    static bool isLoaded(const EditViewController& edit) {
        return edit.player()->currentItem()->status() == AVPlayerItemStatus::readyToPlay;
    }
    /// With the preview at rest.
    std::shared_ptr<EditViewController> openPaused() {
        const auto edit = open();
        EXPECT_TRUE(waitUntil([&] { return isLoaded(*edit); }));
        tapPreview();
        return edit;
    }
};

} // namespace

TEST_F(EditControlsTest, OpensOnTheReversedClipAloneWithWhatIsStored) {
    preferences().setBool(true, "isSaveExifKey");
    // Any value other than 0 means MPEG-4.
    preferences().setInteger(7, "fileTypeIndexKey");
    const auto edit = open();
    EXPECT_EQ(editViews().outputTypeValueLabel->text(), NSLocalizedString("OutputReverseOnly"));
    EXPECT_EQ(editViews().reverseSpeedValueLabel->text(), "1.0x");
    EXPECT_EQ(editViews().fileTypeSegmentedControl->selectedSegmentIndex(), 1);
    EXPECT_TRUE(editViews().exifSwitch->isOn());
    EXPECT_TRUE(edit->player()->isMuted());
    EXPECT_EQ(edit->player()->rate(), -1.0F) << "it plays by itself";
    EXPECT_EQ(editViews().playerView->layer().player(), edit->player());
    EXPECT_FALSE(m_stack->interactivePopGestureRecognizer()->isEnabled());
}

TEST_F(EditControlsTest, TheForwardSpeedIsOutOfReachWhileNothingRunsForward) {
    const auto edit = open();
    const auto slider = editViews().normalSpeedSlider;
    for (const auto& [segment, isEnabled, key] : {std::tuple(1, true, "OutputReverseNormal"),
                                                  {2, true, "OutputNormalReverse"},
                                                  {0, false, "OutputReverseOnly"}}) {
        editViews().outputTypeSegmentedControl->tapSegment(segment);
        EXPECT_EQ(editViews().outputTypeValueLabel->text(), NSLocalizedString(key));
        EXPECT_EQ(slider->isEnabled(), isEnabled);
        EXPECT_EQ(slider->alpha(), isEnabled ? 1.0 : 0.3);
        for (const auto& label : {editViews().normalSpeedLabel, editViews().normalSpeedValueLabel})
            EXPECT_EQ(label->isEnabled(), isEnabled);
        EXPECT_TRUE(editViews().reverseSpeedSlider->isEnabled());
        if (isEnabled)
            setSpeed(*slider, 4.5);
        EXPECT_EQ(edit->normalSpeed(), 4.5);
        EXPECT_EQ(editViews().normalSpeedValueLabel->text(), "4.5x");
    }
}

TEST_F(EditControlsTest, ASpeedSliderHasTwoPiecesAndStepsOfATenth) {
    const auto edit = open();
    const struct {
        float position;
        double speed;
        const char* text;
    } rows[] = {
        {0.0F, 0.1, "0.1x"},    {0.027F, 0.1, "0.1x"}, {0.0285F, 0.2, "0.2x"}, {0.25F, 0.6, "0.6x"},
        {0.4999F, 1.0, "1.0x"}, {0.502F, 1.0, "1.0x"}, {0.5029F, 1.1, "1.1x"}, {1.0F, 10.0, "10.0x"},
    };
    const auto slider = editViews().reverseSpeedSlider;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.position);
        ASSERT_TRUE(slider->beginTracking());
        slider->trackTo(row.position);
        EXPECT_EQ(edit->reverseSpeed(), row.speed);
        EXPECT_EQ(editViews().reverseSpeedValueLabel->text(), row.text);
        EXPECT_EQ(edit->player()->rate(), -1.0F) << "moving it doesn't touch the preview";
        slider->cancelTracking();
    }
}

TEST_F(EditControlsTest, TheSeekBarRunsAgainstTheClip) {
    const auto edit = openPaused();
    const auto bar = editViews().videoSeekBar;
    EXPECT_EQ(bar->maximumValue(), length);
    for (const float position : {0.0F, 0.5F, 12.25F, length}) {
        slide(*bar, position);
        EXPECT_NEAR(seconds(*edit), static_cast<double>(length - position), 1.0 / 600);
        runEventLoopFor(std::chrono::milliseconds(20));
        EXPECT_NEAR(bar->value(), position, 1.0 / 600);
    }
    EXPECT_EQ(edit->player()->rate(), 0.0F);

    slide(*bar, 0.0F);
    tapPreview();
    EXPECT_TRUE(waitUntil([&] { return bar->value() > 0.2F; })) << "it follows the preview";
    ASSERT_TRUE(bar->beginTracking());
    bar->trackTo(0.05F);
    EXPECT_LT(edit->player()->rate(), 0) << "a moving preview goes on from the new place";
    const double before = seconds(*edit);
    EXPECT_TRUE(waitUntil([&] { return seconds(*edit) < before - 0.3; }));
    EXPECT_EQ(bar->value(), 0.05F) << "no tick moves it under the finger";
    bar->cancelTracking();
    EXPECT_TRUE(waitUntil([&] { return bar->value() > 0.3F; }));
}

TEST_F(EditControlsTest, ATapTurnsPlaybackAndTheIconOnAndOff) {
    const auto edit = open();
    setSpeed(*editViews().reverseSpeedSlider, 0.5);
    EXPECT_EQ(icon().second, 0.0);
    tapPreview();
    EXPECT_EQ(edit->player()->rate(), 0.0F);
    EXPECT_EQ(icon(), std::pair(std::string("play.circle"), 1.0));
    tapPreview();
    EXPECT_EQ(edit->player()->rate(), -0.5F);
    EXPECT_EQ(icon(), std::pair(std::string("pause.circle"), 1.0));
    EXPECT_TRUE(waitUntil([&] { return icon().second == 0.0; })) << "it fades";
}

TEST_F(EditControlsTest, APreviewThatHasRunOutWaitsAtTheEndForATap) {
    const auto edit = openEdit(clip("short.mp4", {.width = 64, .height = 48, .frames = 6}));
    EXPECT_TRUE(waitUntil([&] { return edit->player()->rate() == 0 && icon().second == 1.0; }));
    EXPECT_EQ(icon().first, "play.circle");
    EXPECT_NEAR(seconds(*edit), 0.2, 1e-6);
    EXPECT_TRUE(waitUntil([&] { return editViews().videoSeekBar->value() == 0.0F; }));
    tapPreview();
    EXPECT_EQ(edit->player()->rate(), -1.0F);
    EXPECT_TRUE(waitUntil([&] { return edit->player()->rate() == 0; })) << "it ends a second time";
}

TEST_F(EditControlsTest, LeavingForAnotherScreenPausesAndComingBackWaitsForATap) {
    const auto edit = open();
    EXPECT_TRUE(waitUntil([&] { return isLoaded(*edit); }));
    m_stack->pushViewController(std::make_shared<UIViewController>(), false);
    EXPECT_EQ(edit->player()->rate(), 0.0F);
    EXPECT_TRUE(m_stack->interactivePopGestureRecognizer()->isEnabled());
    m_stack->popViewControllerAnimated(false);
    EXPECT_FALSE(m_stack->interactivePopGestureRecognizer()->isEnabled());
    EXPECT_EQ(edit->player()->rate(), 0.0F);
    EXPECT_EQ(icon().second, 0.0) << "the icon stays as it was";
    const auto bar = editViews().videoSeekBar;
    slide(*bar, 0.5F);
    tapPreview();
    EXPECT_TRUE(waitUntil([&] { return bar->value() > 0.7F; }));

    // Nothing watches the player any more once the screen has gone, however often it came.
    m_stack->pushViewController(std::make_shared<UIViewController>(), false);
    runEventLoopFor(std::chrono::milliseconds(20));
    const float position = bar->value();
    edit->player()->setRate(-1);
    const double before = seconds(*edit);
    EXPECT_TRUE(waitUntil([&] { return seconds(*edit) < before - 0.3; }));
    EXPECT_EQ(bar->value(), position);
}

TEST_F(EditControlsTest, TheSeekBarWaitsForAClipThatIsNotLoadedAndIgnoresOneThatNeverWillBe) {
    const auto edit = open();
    slide(*editViews().videoSeekBar, 5);
    EXPECT_TRUE(waitUntil([&] { return isLoaded(*edit); }));
    EXPECT_GT(seconds(*edit), length - 1.0);
    m_stack->popViewControllerAnimated(false);

    std::ofstream(m_folder.file("text.mp4")) << "this is no movie";
    const auto unreadable = openEdit(m_folder.file("text.mp4"));
    slide(*editViews().videoSeekBar, 0);
    const auto item = unreadable->player()->currentItem();
    EXPECT_TRUE(waitUntil([&] { return item->status() == AVPlayerItemStatus::failed; }));
    slide(*editViews().videoSeekBar, 0);
    tapPreview();
}

TEST_F(EditControlsTest, LettingGoOfASpeedSliderPlaysARenditionOfTheReversedSpeed) {
    const auto edit = open();
    editViews().outputTypeSegmentedControl->tapSegment(1);
    setSpeed(*editViews().reverseSpeedSlider, 2.0);
    m_host.clear();
    const auto former = edit->player();
    slide(*editViews().normalSpeedSlider, 1.0F);
    EXPECT_TRUE(waitUntil([&] { return edit->player() != former; }));
    EXPECT_EQ(m_host.story(), (Story{"ring", "no hud"}));
    EXPECT_NEAR(editViews().videoSeekBar->maximumValue(), length / 2, 1e-6)
        << "at the reversed speed, not at 10";
    EXPECT_EQ(edit->player()->rate(), -2.0F);
    EXPECT_TRUE(edit->player()->isMuted());
    EXPECT_EQ(editViews().playerView->layer().player(), edit->player());

    // A paused preview starts again with its rendition.
    tapPreview();
    EXPECT_EQ(icon().second, 1.0);
    const auto second = edit->player();
    slide(*editViews().normalSpeedSlider, 1.0F);
    EXPECT_TRUE(waitUntil([&] { return edit->player() != second; }));
    EXPECT_EQ(edit->player()->rate(), -2.0F);
    EXPECT_EQ(icon().second, 0.0);
}

TEST_F(EditControlsTest, ARenditionThatFailsLeavesThePreviewAndKeepsTheSpeed) {
    const auto edit = open();
    const auto former = edit->player();
    std::filesystem::remove(m_folder.file("clip.mp4"));
    m_host.clear();
    slide(*editViews().reverseSpeedSlider, 1.0F);
    EXPECT_TRUE(waitUntil([&] { return dialog() != nullptr; }));
    EXPECT_EQ(m_host.story().size(), 3u);
    EXPECT_EQ((Story{m_host.story().begin(), m_host.story().begin() + 2}), (Story{"ring", "no hud"}));
    EXPECT_FALSE(dialog()->message().empty());
    EXPECT_EQ(edit->player(), former);
    EXPECT_EQ(edit->reverseSpeed(), 10.0);
}

TEST_F(EditControlsTest, TheMetadataChoiceIsStoredAtOnceTheFileTypeWithTheNextMovie) {
    const auto edit = open();
    editViews().exifSwitch->tap();
    EXPECT_TRUE(preferences().boolForKey("isSaveExifKey"));
    editViews().exifSwitch->tap();
    EXPECT_FALSE(preferences().boolForKey("isSaveExifKey"));
    editViews().fileTypeSegmentedControl->tapSegment(1);
    EXPECT_EQ(preferences().integerForKey("fileTypeIndexKey"), 0);
    editViews().createButton->tap();
    EXPECT_EQ(preferences().integerForKey("fileTypeIndexKey"), 1);
    EXPECT_EQ(edit->player()->rate(), 0.0F);
    EXPECT_TRUE(waitFor("push Preview"));
}

} // namespace anadrome
