#pragma once

#include "Platform/Services/Ads/GADAppOpenAd.h"
#include "Platform/Services/Ads/GADFullScreenContentDelegate.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace anadrome {

class AppOpenAdManagerDelegate;

/// Holds one app-open ad, for four hours at most, and shows it when the program comes to the front. Every
/// ending of an ad, and every activation without one, begins the next load. Failures are printed. Made by
/// std::make_shared. Main thread only.
class AppOpenAdManager : public GADFullScreenContentDelegate,
                         public std::enable_shared_from_this<AppOpenAdManager> {
public:
    using Date = std::chrono::system_clock::time_point;
    using Clock = std::function<Date()>;

    /// The program's one manager, made on first use.
    static AppOpenAdManager& shared();

    explicit AppOpenAdManager(Clock clock = &std::chrono::system_clock::now) : m_clock(std::move(clock)) {}

    /// Nothing is loaded before the ad network has started.
    bool hasStartCompleted() const { return m_hasStartCompleted; }
    void setHasStartCompleted(bool hasStartCompleted) { m_hasStartCompleted = hasStartCompleted; }
    /// Held weakly.
    void setAppOpenAdManagerDelegate(std::weak_ptr<AppOpenAdManagerDelegate> delegate) {
        m_delegate = std::move(delegate);
    }

    /// Null if none is held. It may be too old to be shown.
    const std::shared_ptr<GADAppOpenAd>& appOpenAd() const { return m_appOpenAd; }
    bool isLoadingAd() const { return m_isLoadingAd; }
    /// From the attempt to show an ad until its end is told; without a window to show it in, for good.
    bool isShowingAd() const { return m_isShowingAd; }

    /// Begins a load unless one is under way or a fresh ad is held.
    void startLoad();
    /// Shows the held ad if it is fresh, else begins a load. While the HUD is up, nothing happens.
    void presentIfReady();

    void adWillPresentFullScreenContent() override;
    void adDidDismissFullScreenContent() override;
    void adDidFailToPresentFullScreenContentWithError(const NSError& error) override;

private:
    bool isAdFresh() const;
    void adLoaded(std::shared_ptr<GADAppOpenAd> ad, const std::optional<NSError>& error);
    void presentOverKeyWindow();
    void finish(const std::string& line);
    void tellDelegate();

    const Clock m_clock;
    std::shared_ptr<GADAppOpenAd> m_appOpenAd;
    std::weak_ptr<AppOpenAdManagerDelegate> m_delegate;
    bool m_isLoadingAd = false;
    bool m_isShowingAd = false;
    std::optional<Date> m_loadTime;
    bool m_hasStartCompleted = false;
};

} // namespace anadrome
