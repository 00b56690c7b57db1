#include "Ads/AppOpenAdManager.h"
#include "Platform/AVFoundation/AVAudioSession.h"
#include "Platform/Services/Ads/ALPrivacySettings.h"
#include "Tests/App/LaunchTest.h"
#include "Views/Title/TitleViewController.h"

namespace anadrome {

TEST_F(LaunchTest, BringsUpItsServicesThenTheTitleScreenAndCountsActivations) {
    launch();
    EXPECT_EQ(ALPrivacySettings::hasUserConsent(), true);
    EXPECT_EQ(ALPrivacySettings::doNotSell(), true);
    EXPECT_EQ(preferences().integerForKey("resolutionIndexKey"), 1);
    EXPECT_EQ(AVAudioSession::sharedInstance().category(), AVAudioSessionCategoryPlayback);
    ASSERT_TRUE(m_stack);
    EXPECT_TRUE(std::dynamic_pointer_cast<TitleViewController>(m_stack->topViewController()));
    EXPECT_TRUE(m_scene->delegate()->window()->isKeyWindow());
    using enum UISceneActivationState;
    const struct {
        UISceneActivationState state;
        long count;
    } rows[] = {{foregroundActive, 1}, {foregroundActive, 1},   {background, 1},
                {foregroundActive, 2}, {foregroundInactive, 2}, {foregroundActive, 3}};
    for (const auto& row : rows) {
        m_scene->moveTo(row.state);
        EXPECT_EQ(m_delegate->viewAppearCount(), row.count);
    }
}

namespace {

class ServiceLinesTest : public LaunchTest {
protected:
    void start() {
        launch();
        m_scene->moveTo(UISceneActivationState::foregroundActive);
        // The app-open ad comes last: after the remote values, and after consent.
        const AppOpenAdManager& ads = AppOpenAdManager::shared();
        EXPECT_TRUE(waitUntil([&] { return ads.hasStartCompleted() && !ads.isLoadingAd(); }));
        EXPECT_TRUE(m_host.story().empty()) << "the user sees nothing of it";
    }
};

} // namespace

TEST_F(ServiceLinesTest, ThereAreNoneWhereNoServiceIsDeployed) {
    start();
    EXPECT_EQ(m_host.lines(), Story());
}

TEST_F(ServiceLinesTest, EachDeployedServiceThatCannotBeReachedHasItsOwn) {
    constexpr const char* nobody = "http://127.0.0.1:1/";
    Deployment values;
    values.adEndpoint = values.consentEndpoint = values.remoteConfigEndpoint = nobody;
    values.appOpenAdUnitID = "app-open";
    Deployment::setCurrent(values);
    start();
    const Story lines = m_host.lines();
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0], "App open ad is not ready yet.");
    const auto isPrinted = [&](const std::string& start) {
        return std::ranges::any_of(lines, [&](const auto& line) { return line.starts_with(start); });
    };
    EXPECT_TRUE(isPrinted("Error: "));
    EXPECT_TRUE(isPrinted("Start loading app open ad."));
    EXPECT_TRUE(isPrinted("App open ad failed to load with error: "));
}

} // namespace anadrome
