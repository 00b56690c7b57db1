#pragma once

#include "Platform/Services/Ads/GADAdContent.h"
#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

/// An ad over the whole window, until the user closes it. The front end draws it by its content, and labels
/// it as an ad.
class GADFullScreenAdViewController : public UIViewController {
public:
    explicit GADFullScreenAdViewController(GADAdContent content) : m_content(std::move(content)) {}

    const GADAdContent& content() const { return m_content; }
    /// Called as the ad comes to the screen.
    void setWillAppear(std::function<void()> willAppear) { m_willAppear = std::move(willAppear); }
    /// Called once the ad has gone, however it went.
    void setDismissed(std::function<void()> dismissed) { m_dismissed = std::move(dismissed); }

    /// The user's click on the ad, which stays.
    void click() const { clickAd(m_content); }
    /// The user's tap on the close button.
    void close() { dismissViewControllerAnimated(true); }

protected:
    void viewWillAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;

private:
    const GADAdContent m_content;
    std::function<void()> m_willAppear;
    std::function<void()> m_dismissed;
};

} // namespace anadrome
