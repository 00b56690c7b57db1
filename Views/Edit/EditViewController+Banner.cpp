// The banner at the foot of the screen, which the Create button makes room for.

#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Services/Ads/GADBannerView.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/NSLayoutConstraint.h"
#include "Views/Edit/EditViewController.h"

namespace anadrome {

namespace {

/// Who has saved so many movies gets banners that may be opened and closed.
constexpr long savesUntilCollapsible = 4;
/// Points between the banner and the Create button.
constexpr CGFloat bannerDistance = 8;

GADRequest bannerRequest() {
    GADRequest request;
    if (NSUserDefaults::standardUserDefaults().integerForKey("doneCountKey") >= savesUntilCollapsible) {
        GADExtras extras;
        extras.setAdditionalParameters({{"collapsible", "bottom"}});
        request.registerAdNetworkExtras(std::move(extras));
    }
    return request;
}

} // namespace

void EditViewController::updateBannerView() {
    if (m_bannerView)
        return;
    const GADAdSize size =
        GADCurrentOrientationAnchoredAdaptiveBannerAdSizeWithWidth(view()->frame().size.width);
    m_bannerView = std::make_shared<GADBannerView>(size);
    m_bannerView->setAccessibilityIdentifier("bannerView");
    m_bannerView->setTranslatesAutoresizingMaskIntoConstraints(false);
    view()->addSubview(m_bannerView);
    const UILayoutGuide guide = view()->safeAreaLayoutGuide();
    NSLayoutConstraint::activateConstraints(
        {m_bannerView->centerXAnchor().constraintEqualToAnchor(guide.centerXAnchor()),
         m_bannerView->bottomAnchor().constraintEqualToAnchor(guide.bottomAnchor())});
    m_bannerView->setAdUnitID(Deployment::current().bannerAdUnitID);
    m_bannerView->setRootViewController(weakSelf());
    m_bannerView->loadRequest(bannerRequest());
    m_createButtonBottomConstraint.lock()->setConstant(size.size.height + bannerDistance);
}

} // namespace anadrome
