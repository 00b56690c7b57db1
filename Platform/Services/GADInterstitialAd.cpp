#include "Platform/Services/GADInterstitialAd.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/GADFullScreenAdViewController.h"

namespace anadrome {

void GADInterstitialAd::loadWithAdUnitID(const std::string& adUnitID, const GADRequest& request,
                                         LoadCompletion completion) {
    GADAdSource::current().fetch(
        adUnitID, request, [completion = std::move(completion)](Result<GADAdContent> result) {
            if (result)
                completion(std::shared_ptr<GADInterstitialAd>(new GADInterstitialAd(*result)), std::nullopt);
            else
                completion(nullptr, result.error());
        });
}

void GADInterstitialAd::presentFromRootViewController(UIViewController& controller) {
    if (m_isUsed)
        return fail(GADPresentationErrorCodeAdAlreadyUsed, "The ad has been shown already.");
    const auto screen = std::make_shared<GADFullScreenAdViewController>(m_content);
    // The ad lives at least as long as it is on the screen.
    screen->setDismissed([self = shared_from_this()] {
        if (const auto delegate = self->m_delegate.lock())
            delegate->adDidDismissFullScreenContent();
    });
    controller.presentViewController(screen, true);
    if (controller.presentedViewController() != screen)
        return fail(GADPresentationErrorCodeAdNotReady, "The screen can't show the ad now.");
    m_isUsed = true;
}

void GADInterstitialAd::fail(GADErrorCode code, const std::string& reason) {
    DispatchQueue::main().async([delegate = m_delegate, error = NSError(GADErrorDomain, code, reason)] {
        if (const auto alive = delegate.lock())
            alive->adDidFailToPresentFullScreenContentWithError(error);
    });
}

} // namespace anadrome
