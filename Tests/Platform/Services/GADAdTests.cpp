#include "Platform/Services/Ads/GADAdSize.h"
#include "Platform/Services/Ads/GADAppOpenAd.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Ads/GADInterstitialAd.h"
#include "Platform/Services/Ads/GADMobileAds.h"
#include "Platform/UIKit/UIScreen.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RecordingHost.h"

#include <gtest/gtest.h>
#include <optional>

namespace anadrome {

namespace {

using namespace std::chrono_literals;
using testing_support::RecordingHost;
using testing_support::runEventLoopUntil;

/// Has one ad for everybody, at once.
class OneAd final : public GADAdSource {
public:
    explicit OneAd(GADAdContent content) : m_content(std::move(content)) {}
    void fetch(const GADAdPlace&, const GADRequest&, Completion completion) override {
        completion(m_content);
    }

private:
    const GADAdContent m_content;
};

class NotingDelegate final : public GADFullScreenContentDelegate {
public:
    void adWillPresentFullScreenContent() override { calls.push_back("will present"); }
    void adDidDismissFullScreenContent() override { calls.push_back("dismissed"); }
    void adDidFailToPresentFullScreenContentWithError(const NSError& error) override {
        calls.push_back("failed " + std::to_string(error.code()));
    }
    std::vector<std::string> calls;
};

class FullScreenAdTest : public testing::Test {
protected:
    FullScreenAdTest() { m_host.show(m_root); }
    ~FullScreenAdTest() override {
        m_host.show(nullptr);
        GADAdSource::setCurrent(nullptr);
    }

    template <class Ad>
    std::shared_ptr<Ad> load(GADAdContent content) {
        GADAdSource::setCurrent(std::make_shared<OneAd>(std::move(content)));
        std::shared_ptr<Ad> loaded;
        Ad::loadWithAdUnitID("unit", GADRequest(), [&](std::shared_ptr<Ad> ad, const auto&) { loaded = ad; });
        loaded->setFullScreenContentDelegate(m_delegate);
        return loaded;
    }
    std::vector<std::string> callsOfShowing(GADFullScreenAd& ad) {
        m_delegate->calls.clear();
        ad.presentFromRootViewController(*m_root);
        EXPECT_TRUE(runEventLoopUntil([&] { return !m_delegate->calls.empty(); }));
        return m_delegate->calls;
    }
    std::shared_ptr<GADFullScreenAdViewController> shown() const {
        return std::dynamic_pointer_cast<GADFullScreenAdViewController>(m_root->presentedViewController());
    }

    RecordingHost m_host;
    const std::shared_ptr<UIViewController> m_root = std::make_shared<UIViewController>();
    const std::shared_ptr<NotingDelegate> m_delegate = std::make_shared<NotingDelegate>();
};

} // namespace

TEST_F(FullScreenAdTest, AnAppOpenAdMayBecomeTooOldAndAnInterstitialNever) {
    struct Case {
        std::chrono::seconds age;
        std::optional<std::chrono::seconds> lifetime;
        bool isAppOpenAdShown;
    };
    // A minute's leeway, so that a slow machine doesn't matter.
    for (const Case& each : {Case{239min, {}, true}, Case{240min, {}, false}, Case{10min, 10min, false},
                             Case{10min, 12min, true}, Case{300min, 1000h, false}, Case{0min, 0s, false}}) {
        const GADAdContent content{
            .text = "ad", .received = std::chrono::system_clock::now() - each.age, .lifetime = each.lifetime};
        const auto check = [&](GADFullScreenAd& ad, bool isShown) {
            const char* expected = isShown ? "will present" : "failed 15";
            EXPECT_EQ(callsOfShowing(ad), std::vector<std::string>{expected}) << each.age.count();
            EXPECT_EQ(shown() != nullptr, isShown);
            m_root->dismissViewControllerAnimated(false);
            QCoreApplication::processEvents();
        };
        check(*load<GADInterstitialAd>(content), true);
        check(*load<GADAppOpenAd>(content), each.isAppOpenAdShown);
    }
}

TEST_F(FullScreenAdTest, IsShownOnceAndAClickOpensOnlyWebAddresses) {
    for (const char* link :
         {"https://shop.example/", "http://shop.example/", "file:///etc/passwd", "javascript:alert(1)", ""}) {
        m_host.calls.clear();
        const auto ad = load<GADInterstitialAd>({.text = "ad", .link = link});
        EXPECT_EQ(callsOfShowing(*ad), std::vector<std::string>{"will present"});
        shown()->click();
        const bool isWeb = std::string(link).starts_with("http");
        EXPECT_EQ(m_host.calls.back() == "open " + std::string(link), isWeb) << link;
        shown()->close();
        EXPECT_TRUE(runEventLoopUntil([&] { return m_delegate->calls.back() == "dismissed"; }));
        EXPECT_EQ(callsOfShowing(*ad), std::vector<std::string>{"failed 18"});
    }
}

TEST(GADAdSize, ABannerIsAsHighAsSuitsItsWidthAndTheScreen) {
    struct Case {
        CGFloat width;
        CGFloat screenHeight;
        CGFloat height;
    };
    const CGRect former = UIScreen::mainScreen().bounds();
    for (const auto& [width, screenHeight, height] :
         {Case{320, 568, 50}, Case{375, 667, 59}, Case{390, 844, 61}, Case{414, 896, 65}, Case{428, 926, 67},
          Case{500, 900, 68}, Case{600, 1024, 77}, Case{768, 1024, 90}, Case{812, 375, 56},
          Case{640, 1000, 81}, Case{320, 200, 50}}) {
        UIScreen::mainScreen().setBounds({{0, 0}, {width, screenHeight}});
        const GADAdSize size = GADCurrentOrientationAnchoredAdaptiveBannerAdSizeWithWidth(width);
        EXPECT_EQ(size.size, (CGSize{width, height}));
    }
    UIScreen::mainScreen().setBounds(former);
    for (const CGFloat width : {0.0, -1.0})
        EXPECT_FALSE(GADCurrentOrientationAnchoredAdaptiveBannerAdSizeWithWidth(width).isValid());
}

TEST(GADMobileAds, StartsAfterTheCall) {
    bool hasStarted = false;
    GADMobileAds::sharedInstance().startWithCompletionHandler([&] { hasStarted = true; });
    EXPECT_FALSE(hasStarted);
    EXPECT_TRUE(runEventLoopUntil([&] { return hasStarted; }));
}

} // namespace anadrome
