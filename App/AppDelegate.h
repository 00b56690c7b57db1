#pragma once

#include "Platform/UIKit/UIApplicationDelegate.h"

namespace anadrome {

class GADInterstitialAd;

/// Brings up what runs beside the screens, in a fixed order, and counts how often the program came to the
/// front. Main thread only.
class AppDelegate : public UIApplicationDelegate {
public:
    bool didFinishLaunchingWithOptions(UIApplication& application, const Dictionary& options) override;
    UISceneConfiguration configurationForConnectingSceneSession(UIApplication& application,
                                                                const UISceneSession& session) override;

    long viewAppearCount() const { return m_viewAppearCount; }
    void setViewAppearCount(long count) { m_viewAppearCount = count; }

private:
    static void registerPreferences();
    static void fetchRemoteConfig();
    static void prepareSound();

    std::shared_ptr<GADInterstitialAd> m_interstitial;
    long m_viewAppearCount = 0;
};

} // namespace anadrome
