#include "Ads/AppOpenAdManager.h"

#include "Ads/AppOpenAdManagerDelegate.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Tests/Views/HeldAds.h"
#include "Tests/Views/ScreenTest.h"

namespace anadrome {

namespace {

constexpr const char* loading = "Start loading app open ad.";
constexpr const char* loaded = "App open ad loaded successfully.";
constexpr const char* failedToLoad = "App open ad failed to load with error: no network.";
constexpr const char* notReady = "App open ad is not ready yet.";
constexpr const char* displaying = "App open ad will be displayed.";
constexpr const char* presenting = "App open ad is will be presented.";
constexpr const char* showing = "App open ad is already showing.";
constexpr const char* dismissed = "App open ad was dismissed.";

class CountingDelegate final : public AppOpenAdManagerDelegate {
public:
    void appOpenAdManagerDidFinish(AppOpenAdManager&) override { ++count; }
    int count = 0;
};

class AppOpenAdManagerTest : public ScreenTest {
protected:
    AppOpenAdManagerTest() {
        GADAdSource::setCurrent(m_ads);
        m_manager->setAppOpenAdManagerDelegate(m_delegate);
    }
    ~AppOpenAdManagerTest() override { GADAdSource::setCurrent(nullptr); }

    void start() {
        m_manager->setHasStartCompleted(true);
        m_manager->startLoad();
    }
    void startAndLoad() {
        start();
        m_ads->give({.text = "ad"});
        m_host.clear();
    }
    /// The lines since the last time.
    Story lines() {
        Story all = m_host.lines();
        m_host.clear();
        return all;
    }
    bool waitForLine(const std::string& line) {
        return waitUntil([&] { return std::ranges::count(m_host.lines(), line) > 0; });
    }
    std::shared_ptr<GADFullScreenAdViewController> shownAd() const {
        return std::dynamic_pointer_cast<GADFullScreenAdViewController>(m_stack->presentedViewController());
    }
    void pass(int seconds) { m_now += std::chrono::seconds(seconds); }
    /// Held, loading, showing.
    std::vector<bool> state() const {
        return {m_manager->appOpenAd() != nullptr, m_manager->isLoadingAd(), m_manager->isShowingAd()};
    }
    using State = std::vector<bool>;

    const std::shared_ptr<HeldAds> m_ads = std::make_shared<HeldAds>(GADAdFormat::appOpen);
    const std::shared_ptr<CountingDelegate> m_delegate = std::make_shared<CountingDelegate>();
    AppOpenAdManager::Date m_now = std::chrono::system_clock::now();
    const std::shared_ptr<AppOpenAdManager> m_manager =
        std::make_shared<AppOpenAdManager>([this] { return m_now; });
};

} // namespace

TEST_F(AppOpenAdManagerTest, LoadsNothingBeforeTheAdNetworkHasStarted) {
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), Story{notReady});
    EXPECT_EQ(m_delegate->count, 1);
    EXPECT_FALSE(m_ads->isWaiting());
    start();
    EXPECT_EQ(lines(), Story{loading});
    EXPECT_EQ(state(), (State{false, true, false}));
}

TEST_F(AppOpenAdManagerTest, ActivationsDuringALoadBeginNoSecondAndAFailureIsTriedAgainByTheNext) {
    start();
    m_manager->presentIfReady();
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), (Story{loading, notReady, notReady}));
    EXPECT_EQ(m_ads->asked.size(), 1U);
    m_ads->refuse();
    EXPECT_EQ(lines(), Story{failedToLoad});
    EXPECT_EQ(state(), (State{false, false, false}));
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), (Story{notReady, loading}));
    m_ads->give({.text = "ad"});
    EXPECT_EQ(lines(), Story{loaded});
    m_manager->startLoad();
    EXPECT_EQ(m_ads->asked.size(), 2U) << "a fresh ad is held";
}

TEST_F(AppOpenAdManagerTest, AnAdIsShownOnceAndTheNextIsOnItsWayAtOnce) {
    startAndLoad();
    pass(14399);
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), (Story{displaying, presenting}));
    ASSERT_TRUE(shownAd());
    EXPECT_EQ(state(), (State{true, false, true}));
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), Story{showing});
    shownAd()->close();
    EXPECT_TRUE(waitForLine(loading));
    EXPECT_EQ(lines(), (Story{dismissed, loading}));
    EXPECT_EQ(m_delegate->count, 1);
    EXPECT_EQ(state(), (State{false, true, false}));
}

TEST_F(AppOpenAdManagerTest, AnAdOfFourHoursIsHeldUntilTheNextLoadEndsButNeverShown) {
    startAndLoad();
    pass(14400);
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), (Story{notReady, loading}));
    EXPECT_FALSE(shownAd());
    EXPECT_EQ(state(), (State{true, true, false}));
    m_ads->refuse();
    EXPECT_EQ(state(), (State{false, false, false}));
}

TEST_F(AppOpenAdManagerTest, AnAdThatCannotBeShownIsGivenUp) {
    startAndLoad();
    m_stack->presentViewController(std::make_shared<UIViewController>(), false);
    m_manager->presentIfReady();
    EXPECT_TRUE(waitForLine(loading));
    EXPECT_EQ(lines(), (Story{displaying, "A controller can't present: it presents another already",
                              "App open ad failed to present with error: The screen can't show the ad now..",
                              loading}));
    EXPECT_EQ(m_delegate->count, 1);
    EXPECT_EQ(state(), (State{false, true, false}));
}

TEST_F(AppOpenAdManagerTest, WithoutAScreenInTheKeyWindowTheAdCountsAsShownForGood) {
    startAndLoad();
    m_host.show(nullptr);
    m_manager->presentIfReady();
    m_host.show(m_stack);
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), (Story{displaying, showing}));
    EXPECT_EQ(state(), (State{true, false, true}));
}

TEST_F(AppOpenAdManagerTest, WhileTheHudIsUpAnActivationDoesNothing) {
    m_manager->setHasStartCompleted(true);
    ViewHelper::showHud(m_stack->view());
    ASSERT_TRUE(waitFor("ring"));
    m_host.clear();
    m_manager->presentIfReady();
    m_manager->startLoad();
    m_ads->give({.text = "ad"});
    m_manager->presentIfReady();
    EXPECT_EQ(lines(), (Story{loading, loaded}));
    EXPECT_EQ(m_delegate->count, 0);
    EXPECT_FALSE(shownAd());
    ViewHelper::hideHud();
    EXPECT_TRUE(waitFor("no hud"));
}

} // namespace anadrome
