#include "Platform/Services/Ads/GADFullScreenAd.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/UIKit/UIScreen.h"

namespace anadrome {

void GADFullScreenAd::fetch(GADAdFormat format, const std::string& adUnitID, const GADRequest& request,
                            GADAdSource::Completion completion) {
    const CGSize room = UIScreen::mainScreen().bounds().size;
    GADAdSource::current().fetch({format, adUnitID, room}, request, std::move(completion));
}

bool GADFullScreenAd::isExpired() const {
    return m_expiry && std::chrono::system_clock::now() >= *m_expiry;
}

void GADFullScreenAd::presentFromRootViewController(UIViewController& controller) {
    if (m_isUsed)
        return fail(GADPresentationErrorCodeAdAlreadyUsed, "The ad has been shown already.");
    if (isExpired())
        return fail(GADPresentationErrorCodeAdNotReady, "The ad is too old to be shown.");
    const auto screen = std::make_shared<GADFullScreenAdViewController>(m_content);
    screen->setWillAppear([delegate = m_delegate] {
        if (const auto alive = delegate.lock())
            alive->adWillPresentFullScreenContent();
    });
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

void GADFullScreenAd::fail(GADErrorCode code, const std::string& reason) {
    DispatchQueue::main().async([delegate = m_delegate, error = NSError(GADErrorDomain, code, reason)] {
        if (const auto alive = delegate.lock())
            alive->adDidFailToPresentFullScreenContentWithError(error);
    });
}

} // namespace anadrome
