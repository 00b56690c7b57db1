#include "Models/VideoFileManager.h"
#include "Platform/AVKit/AVPlayerViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Tests/Support/Environment.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Views/ScreenTest.h"

#include <filesystem>

namespace anadrome {

using namespace testing_support;
namespace fs = std::filesystem;

namespace {

/// A Preview screen above an Edit screen, and a Videos folder of the test's own.
class PreviewScreenTest : public ScreenTest {
protected:
    PreviewScreenTest() {
        const std::string movie =
            VideoFileManager::videosDirectory().appendingPathComponent("movie.mov").path();
        makeClip(movie, {.width = 64, .height = 48, .frames = 6});
        openEdit(movie);
        openPreview(movie);
        m_host.clear();
    }

    /// Saves until there is an answer: the dialog's message, or nothing after the tick.
    std::string save() {
        // The tick of the save before lies over the button for its two seconds.
        ViewHelper::shared().hud().dismiss();
        m_host.clear();
        previewViews().saveButton->tap();
        EXPECT_TRUE(waitUntil([&] { return dialog() || m_host.tells("tick"); }, std::chrono::seconds(10)));
        if (!dialog())
            return "";
        const std::string message = dialog()->message();
        dialog()->chooseAction(0);
        return message;
    }
    std::shared_ptr<UIActivityViewController> sheet() const {
        return std::dynamic_pointer_cast<UIActivityViewController>(m_stack->presentedViewController());
    }
    fs::path library() const { return m_folder.path() / "Videos" / "Anadrome"; }

    const Environment m_home{"HOME", m_folder.path()};
    const Environment m_configuration{"XDG_CONFIG_HOME", m_folder.file("config")};
};

} // namespace

TEST_F(PreviewScreenTest, ShowsTheMovieInAPlayerThatWaits) {
    const auto preview = std::static_pointer_cast<PreviewViewController>(m_stack->topViewController());
    const auto& player = preview->playerController();
    EXPECT_EQ(preview->childViewControllers().at(0), player);
    EXPECT_EQ(player->player(), preview->playerBefore());
    EXPECT_EQ(preview->playerBefore()->rate(), 0.0F);
    EXPECT_FALSE(preview->playerBefore()->isMuted());
    EXPECT_EQ(previewViews().videoContainerView1->subviews().at(0), player->view());
}

TEST_F(PreviewScreenTest, EverySaveCountsAndTheFirstAndEveryFifthAfterItAskForAReview) {
    Deployment::setCurrent({.storeAddress = "https://store.example", .storeIdentifier = "42"});
    for (int count = 1; count <= 6; ++count) {
        EXPECT_EQ(save(), "");
        Story expected{"event save", "ring", "no hud", "tick"};
        if (count % 5 == 1)
            expected.insert(expected.begin() + 2, "review");
        EXPECT_EQ(m_host.story(), expected) << count;
        EXPECT_EQ(preferences().integerForKey("doneCountKey"), count);
        EXPECT_EQ(std::distance(fs::directory_iterator(library()), {}), count);
    }
    Deployment::setCurrent({});
}

TEST_F(PreviewScreenTest, AFailedSaveSaysWhyCountsNothingAndCanBeTriedAgain) {
    {
        const Environment nowhere("HOME", "/sys");
        EXPECT_EQ(save(), NSLocalizedString("error.accessUserDenied"));
    }
    {
        const FileSizeLimit full(16);
        EXPECT_EQ(save(), NSLocalizedString("error.notEnoughSpace"));
    }
    EXPECT_EQ(m_host.story().at(0), "event save");
    EXPECT_FALSE(m_host.tells("tick"));
    EXPECT_EQ(preferences().integerForKey("doneCountKey"), 0);
    EXPECT_EQ(save(), "");
    EXPECT_EQ(preferences().integerForKey("doneCountKey"), 1);
    const URL movie = VideoFileManager::videosDirectory().appendingPathComponent("movie.mov");
    fs::remove(movie.path());
    EXPECT_NE(save(), "");
    EXPECT_EQ(preferences().integerForKey("doneCountKey"), 1);
}

TEST_F(PreviewScreenTest, ShareSheetsHaveTheMovieOrATextAboutTheProgram) {
    const URL movie = VideoFileManager::videosDirectory().appendingPathComponent("movie.mov");
    previewViews().shareButton->tap();
    EXPECT_EQ(m_host.story(), (Story{"event share", "share sheet"}));
    ASSERT_EQ(sheet()->activityItems().size(), 1u);
    EXPECT_EQ(std::get<URL>(sheet()->activityItems().at(0)), movie);
    sheet()->finish(std::nullopt, false);
    m_host.clear();
    previewViews().shareAppButton->tap();
    EXPECT_EQ(m_host.story(), (Story{"event result_app_share", "share sheet"}));
    EXPECT_EQ(sheet()->activityItems(),
              std::vector<UIActivityViewController::Item>{NSLocalizedString("AppName")});
}

TEST_F(PreviewScreenTest, TheWayBackToTheStartTakesTheWorkFilesAlong) {
    previewViews().selectOtherVideoButton->tap();
    EXPECT_EQ(m_host.story(), (Story{"event to_top", "pop 2"}));
    EXPECT_EQ(m_stack->viewControllers().size(), 1u);
    EXPECT_TRUE(fs::is_empty(VideoFileManager::videosDirectory().path()));
}

} // namespace anadrome
