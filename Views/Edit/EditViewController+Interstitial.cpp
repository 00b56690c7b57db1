// The ad between a finished movie and the Preview screen.

#include "Platform/Services/Deployment.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/Services/ServiceLines.h"
#include "Views/Edit/EditViewController.h"

namespace anadrome {

void EditViewController::loadInterstitial() {
    GADInterstitialAd::loadWithAdUnitID(
        Deployment::current().interstitialAdUnitID, GADRequest(),
        [self = self()](std::shared_ptr<GADInterstitialAd> ad, const std::optional<NSError>& error) {
            if (error) {
                // What was held before stays, even if it has been shown.
                printServiceLine(OutsideService::ads, error->localizedDescription());
                return;
            }
            self->m_interstitial = std::move(ad);
            if (self->m_interstitial)
                self->m_interstitial->setFullScreenContentDelegate(self);
        });
}

bool EditViewController::presentInterstitial() {
    if (m_interstitial) {
        m_interstitial->presentFromRootViewController(*this);
        return true;
    }
    printServiceLine(OutsideService::ads, "Ad wasn't ready");
    FIRAnalytics::logEventWithName("ad_not_ready_compress");
    return false;
}

void EditViewController::adDidDismissFullScreenContent() {
    loadInterstitial();
    showPreview();
}

} // namespace anadrome
