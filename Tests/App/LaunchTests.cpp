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

TEST_F(LaunchTest, WithoutAnyServerCostsALineForEachService) {
    launch();
    m_scene->moveTo(UISceneActivationState::foregroundActive);
    EXPECT_EQ(m_host.lines(), Story{"App open ad is not ready yet."}) << "nothing is waited for";
    const std::string last = "App open ad failed to load with error: No ad server is configured..";
    EXPECT_TRUE(waitUntil([&] { return m_host.lines().back() == last; }));
    EXPECT_EQ(m_host.lines(),
              (Story{"App open ad is not ready yet.", "No remote configuration server is configured.",
                     "Error: No consent server is configured.", "Start loading app open ad.", last}));
    EXPECT_TRUE(m_host.story().empty()) << "the user sees nothing of it";
}

} // namespace anadrome
