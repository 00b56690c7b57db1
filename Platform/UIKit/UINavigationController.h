#pragma once

#include "Platform/UIKit/UIGestureRecognizer.h"
#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

/// A stack of screens, of which the top one shows.
class UINavigationController : public UIViewController {
public:
    explicit UINavigationController(const std::shared_ptr<UIViewController>& root);

    /// The root first. A screen that is popped has left this list, but not yet this controller, when its
    /// calls come.
    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const { return m_stack; }
    std::shared_ptr<UIViewController> topViewController() const;

    /// The order of the calls: the new screen's viewDidLoad; the old one's viewWillDisappear and the new
    /// one's viewWillAppear; the old one's viewDidDisappear and the new one's viewDidAppear. A controller
    /// that is on the stack already is fatal.
    void pushViewController(const std::shared_ptr<UIViewController>& controller, bool animated);
    /// What was on top, in the same order of calls; null, and nothing happens, at the root.
    std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);
    /// What was above the root, the former top last. Only the top has life-cycle calls.
    std::vector<std::shared_ptr<UIViewController>> popToRootViewControllerAnimated(bool animated);

    /// The user's gesture that leads back; a screen that wants none disables it.
    const std::shared_ptr<UIGestureRecognizer>& interactivePopGestureRecognizer() const {
        return m_backSwipe;
    }
    /// The user swipes back. Without effect at the root, while the gesture is disabled or out of reach.
    void swipeBack();

protected:
    void viewDidLoad() override;
    std::vector<std::shared_ptr<UIViewController>> shownChildren() const override;

private:
    std::vector<std::shared_ptr<UIViewController>> popTo(std::size_t depth, bool animated);

    std::vector<std::shared_ptr<UIViewController>> m_stack;
    const std::shared_ptr<UIGestureRecognizer> m_backSwipe = std::make_shared<UIGestureRecognizer>();
};

} // namespace anadrome
