// The banner at the foot of the screen, which the Create button makes room for.

#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Services/Deployment.h"
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
    if (m_views->bannerView)
        return;
    const GADAdSize size =
        GADCurrentOrientationAnchoredAdaptiveBannerAdSizeWithWidth(view()->frame().size.width);
    const auto banner = m_views->bannerView = std::make_shared<GADBannerView>(size);
    banner->setTranslatesAutoresizingMaskIntoConstraints(false);
    view()->addSubview(banner);
    const UILayoutGuide guide = view()->safeAreaLayoutGuide();
    NSLayoutConstraint::activateConstraints(
        {banner->centerXAnchor().constraintEqualToAnchor(guide.centerXAnchor()),
         banner->bottomAnchor().constraintEqualToAnchor(guide.bottomAnchor())});
    banner->setAdUnitID(Deployment::current().bannerAdUnitID);
    banner->setRootViewController(weakSelf());
    banner->loadRequest(bannerRequest());
    m_views->createButtonBottomConstraint->setConstant(size.size.height + bannerDistance);
}

} // namespace anadrome
