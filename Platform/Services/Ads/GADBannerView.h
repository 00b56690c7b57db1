#pragma once

#include "Platform/Services/Ads/GADAdContent.h"
#include "Platform/Services/Ads/GADAdSize.h"
#include "Platform/Services/Ads/GADRequest.h"
#include "Platform/UIKit/UIView.h"

#include <memory>
#include <optional>
#include <string>

namespace anadrome {

class UIViewController;

/// An ad in a screen. It is empty until an ad has been loaded; then a front end draws the content, and labels
/// it as an ad. Main thread only.
class GADBannerView : public UIView {
public:
    explicit GADBannerView(GADAdSize size) : m_adSize(size) {}

    /// The room that the banner takes, whether filled or not.
    const GADAdSize& adSize() const { return m_adSize; }

    void setAdUnitID(std::string adUnitID) { m_adUnitID = std::move(adUnitID); }
    /// The screen that the banner is in, held weakly. Without it a click leads nowhere.
    void setRootViewController(std::weak_ptr<UIViewController> controller) {
        m_rootViewController = std::move(controller);
    }

    /// Fetches an ad from the program's source and shows it. If there is none, the banner stays as it is; so
    /// it does if its size is invalid.
    void loadRequest(const GADRequest& request);

    /// Empty while no ad has come.
    const std::optional<GADAdContent>& content() const { return m_content; }

    /// The user's click: opens the ad's link. Without effect where it wouldn't reach the banner.
    void click() const;

private:
    const GADAdSize m_adSize;
    std::string m_adUnitID;
    std::weak_ptr<UIViewController> m_rootViewController;
    std::optional<GADAdContent> m_content;
};

} // namespace anadrome
