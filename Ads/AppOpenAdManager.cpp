#include "Ads/AppOpenAdManager.h"

#include "Ads/AppOpenAdManagerDelegate.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/ServiceLines.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIWindow.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome {

namespace {

/// For how long a loaded ad stays usable.
constexpr std::chrono::duration<double> timeoutInterval(14400.0);

} // namespace

AppOpenAdManager& AppOpenAdManager::shared() {
    static const auto instance = std::make_shared<AppOpenAdManager>();
    return *instance;
}

bool AppOpenAdManager::isAdFresh() const {
    return m_appOpenAd && m_loadTime && m_clock() - *m_loadTime < timeoutInterval;
}

void AppOpenAdManager::startLoad() {
    if (!m_hasStartCompleted || m_isLoadingAd || isAdFresh())
        return;
    m_isLoadingAd = true;
    printServiceLine(OutsideService::ads, "Start loading app open ad.");
    GADAppOpenAd::loadWithAdUnitID(
        Deployment::current().appOpenAdUnitID, GADRequest(),
        [self = shared_from_this()](std::shared_ptr<GADAppOpenAd> ad, const std::optional<NSError>& error) {
            self->adLoaded(std::move(ad), error);
        });
}

void AppOpenAdManager::adLoaded(std::shared_ptr<GADAppOpenAd> ad, const std::optional<NSError>& error) {
    m_isLoadingAd = false;
    if (error) {
        m_appOpenAd.reset();
        m_loadTime.reset();
        printServiceLine(OutsideService::ads,
                         "App open ad failed to load with error: " + error->localizedDescription() + ".");
        return;
    }
    m_appOpenAd = std::move(ad);
    if (m_appOpenAd)
        m_appOpenAd->setFullScreenContentDelegate(shared_from_this());
    m_loadTime = m_clock();
    printServiceLine(OutsideService::ads, "App open ad loaded successfully.");
}

void AppOpenAdManager::presentIfReady() {
    if (ViewHelper::shared().hud().isVisible())
        return;
    if (m_isShowingAd)
        return printServiceLine(OutsideService::ads, "App open ad is already showing.");
    if (isAdFresh())
        return presentOverKeyWindow();
    printServiceLine(OutsideService::ads, "App open ad is not ready yet.");
    tellDelegate();
    startLoad();
}

void AppOpenAdManager::presentOverKeyWindow() {
    printServiceLine(OutsideService::ads, "App open ad will be displayed.");
    m_isShowingAd = true;
    for (const auto& window : UIApplication::sharedApplication().windows()) {
        if (!window->isKeyWindow())
            continue;
        if (const auto root = window->rootViewController())
            m_appOpenAd->presentFromRootViewController(*root);
        return;
    }
}

void AppOpenAdManager::adWillPresentFullScreenContent() {
    printServiceLine(OutsideService::ads, "App open ad is will be presented.");
}

void AppOpenAdManager::adDidDismissFullScreenContent() {
    finish("App open ad was dismissed.");
}

void AppOpenAdManager::adDidFailToPresentFullScreenContentWithError(const NSError& error) {
    finish("App open ad failed to present with error: " + error.localizedDescription() + ".");
}

void AppOpenAdManager::finish(const std::string& line) {
    m_appOpenAd.reset();
    m_isShowingAd = false;
    printServiceLine(OutsideService::ads, line);
    tellDelegate();
    startLoad();
}

void AppOpenAdManager::tellDelegate() {
    if (const auto delegate = m_delegate.lock())
        delegate->appOpenAdManagerDidFinish(*this);
}

} // namespace anadrome
