// From the question for consent to the one start of the ads. Nothing of it reaches the user but the form.

#include "Ads/AppOpenAdManager.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Ads/GADMobileAds.h"
#include "Platform/Services/Consent/UMPConsentForm.h"
#include "Platform/Services/Consent/UMPConsentInformation.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/ServiceLines.h"
#include "Views/Title/TitleViewController.h"

namespace anadrome {

namespace {

void printError(const NSError& error) {
    printServiceLine(OutsideService::consent, "Error: " + error.localizedDescription());
}

} // namespace

void TitleViewController::gatherConsent() {
    UMPRequestParameters parameters;
    parameters.setTagForUnderAgeOfConsent(false);
    UMPConsentInformation& consent = UMPConsentInformation::sharedInstance();
    consent.requestConsentInfoUpdateWithParameters(parameters,
                                                   [weak = weakSelf()](const std::optional<NSError>& error) {
                                                       if (const auto self = weak.lock())
                                                           self->consentUpdated(error);
                                                   });
    // Who consented in an earlier run needn't wait for the update.
    if (consent.canRequestAds())
        scheduleMobileAdsStart();
}

void TitleViewController::consentUpdated(const std::optional<NSError>& error) {
    if (error) {
        scheduleMobileAdsStart();
        printError(*error);
        return;
    }
    UMPConsentForm::loadAndPresentIfRequiredFromViewController(
        *this, [weak = weakSelf()](const std::optional<NSError>& formError) {
            if (const auto self = weak.lock())
                self->consentFormFinished(formError);
        });
}

void TitleViewController::consentFormFinished(const std::optional<NSError>& error) {
    if (error) {
        scheduleMobileAdsStart();
        printError(*error);
        return;
    }
    if (UMPConsentInformation::sharedInstance().canRequestAds())
        scheduleMobileAdsStart();
}

void TitleViewController::scheduleMobileAdsStart() {
    DispatchQueue::main().async([weak = weakSelf()] {
        if (const auto self = weak.lock())
            self->startMobileAds();
    });
}

void TitleViewController::startMobileAds() {
    if (m_isMobileAdsStartCalled)
        return;
    m_isMobileAdsStartCalled = true;
    GADMobileAds& ads = GADMobileAds::sharedInstance();
    ads.requestConfiguration().setTestDeviceIdentifiers({Deployment::current().testDeviceIdentifier});
    ads.startWithCompletionHandler([] {
        AppOpenAdManager& manager = AppOpenAdManager::shared();
        manager.setHasStartCompleted(true);
        manager.startLoad();
    });
}

} // namespace anadrome
