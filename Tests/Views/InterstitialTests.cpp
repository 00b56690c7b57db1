#include "Models/VideoFileManager.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Tests/Views/HeldAds.h"
#include "Tests/Views/ScreenTest.h"

#include <filesystem>
#include <fstream>

namespace anadrome {

namespace {

class InterstitialTest : public ScreenTest {
protected:
    InterstitialTest() {
        GADAdSource::setCurrent(m_ads);
        openEdit(clip("clip.mp4", {.width = 64, .height = 48, .frames = 6}));
        m_host.clear();
    }
    ~InterstitialTest() override { GADAdSource::setCurrent(nullptr); }

    void giveAd(const std::string& text) { m_ads->give({.text = text}); }
    /// Makes a movie, up to where the screen says what comes next.
    void makeMovie() {
        const std::optional<URL> before = edit().outputUrlForPreview();
        m_host.clear();
        editViews().createButton->tap();
        // The HUD goes a moment before the movie is there.
        EXPECT_TRUE(waitUntil([&] { return edit().outputUrlForPreview() != before; }));
    }
    EditViewController& edit() const {
        return dynamic_cast<EditViewController&>(*m_stack->viewControllers().at(1));
    }
    std::shared_ptr<GADFullScreenAdViewController> shownAd() const {
        return std::dynamic_pointer_cast<GADFullScreenAdViewController>(m_stack->presentedViewController());
    }

    const std::shared_ptr<HeldAds> m_ads = std::make_shared<HeldAds>(GADAdFormat::interstitial);
};

} // namespace

TEST_F(InterstitialTest, AnAdThatHasNotComeIsNotWaitedForAndServesTheNextMovie) {
    EXPECT_EQ(m_ads->asked.size(), 1U) << "asked for as the screen opens";
    makeMovie();
    EXPECT_EQ(m_host.story(), (Story{"pie", "no hud", "event ad_not_ready_compress", "push Preview"}));
    EXPECT_EQ(m_host.lines(), Story{"Ad wasn't ready"});
    giveAd("late");
    m_stack->popViewControllerAnimated(false);
    makeMovie();
    ASSERT_TRUE(shownAd());
    EXPECT_EQ(shownAd()->content().text, "late");
    EXPECT_EQ(m_ads->asked.size(), 1U);
}

TEST_F(InterstitialTest, TheMovieOpensWhenTheAdIsClosedAndTheNextAdIsOnItsWay) {
    giveAd("first");
    makeMovie();
    EXPECT_EQ(m_host.story(), (Story{"pie", "no hud", "ad"})) << "no event, and no Preview screen yet";
    EXPECT_EQ(m_ads->asked.size(), 1U);
    shownAd()->close();
    EXPECT_TRUE(waitFor("push Preview"));
    EXPECT_EQ(m_ads->asked.size(), 2U);
    giveAd("second");
    m_stack->popViewControllerAnimated(false);
    makeMovie();
    ASSERT_TRUE(shownAd());
    EXPECT_EQ(shownAd()->content().text, "second");
}

TEST_F(InterstitialTest, AnAdThatCannotBeShownAgainLeavesTheUserOnTheEditScreenWithTheMovie) {
    giveAd("only");
    makeMovie();
    shownAd()->close();
    EXPECT_TRUE(waitFor("push Preview"));
    m_host.clear();
    m_ads->refuse();
    EXPECT_EQ(m_host.lines(), Story{"no network"});
    m_stack->popViewControllerAnimated(false);
    makeMovie();
    waitUntil([] { return false; }, std::chrono::milliseconds(100));
    EXPECT_EQ(m_host.story(), (Story{"pie", "no hud"}));
    EXPECT_EQ(m_ads->asked.size(), 2U);
}

TEST_F(InterstitialTest, AScreenThatALateAdKeepsDoesNotSweepTheFilesOfTheNextClip) {
    const auto makeWorkFile = [] {
        const std::string path =
            VideoFileManager::videosDirectory().appendingPathComponent("work.mov").path();
        std::ofstream(path) << "movie";
        return path;
    };
    const std::string workFile = makeWorkFile();
    const std::weak_ptr<UIViewController> left = m_stack->viewControllers().at(1);
    m_stack->popViewControllerAnimated(false);
    EXPECT_FALSE(std::filesystem::exists(workFile)) << "swept as the screen is left";
    ASSERT_TRUE(left.lock()) << "held by the request";
    makeWorkFile();
    m_ads->refuse();
    EXPECT_TRUE(waitUntil([&] { return left.expired(); }));
    EXPECT_TRUE(std::filesystem::exists(workFile));
}

TEST_F(InterstitialTest, WithoutASourceALoadFailsPlainly) {
    GADAdSource::setCurrent(nullptr);
    std::optional<NSError> failure;
    GADInterstitialAd::loadWithAdUnitID("", GADRequest(), [&](const auto& ad, const auto& error) {
        EXPECT_EQ(ad, nullptr);
        failure = error;
    });
    EXPECT_FALSE(failure) << "never before the call returns";
    EXPECT_TRUE(waitUntil([&] { return failure.has_value(); }));
    EXPECT_EQ(failure->code(), GADErrorNetworkError);
}

} // namespace anadrome
