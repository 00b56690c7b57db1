#pragma once

#include "Platform/UIKit/UINavigationItem.h"

#include <functional>
#include <memory>
#include <vector>

namespace anadrome {

class UINavigationController;
class UIView;
class UIWindow;

/// One screen: its view, what happens when it comes and goes, and how it leads to others. Made by
/// std::make_shared. A controller owns its view, its children and what it presents; those know it weakly.
/// Main thread only.
///
/// Transitions are over when the call that starts them returns, whether animated or not.
class UIViewController : public std::enable_shared_from_this<UIViewController> {
public:
    using Completion = std::function<void()>;

    UIViewController() = default;
    UIViewController(const UIViewController&) = delete;
    UIViewController& operator=(const UIViewController&) = delete;
    virtual ~UIViewController();

    /// Loaded at the first call, never again.
    const std::shared_ptr<UIView>& view();
    bool isViewLoaded() const { return m_view != nullptr; }

    std::shared_ptr<UIViewController> parentViewController() const;
    const std::vector<std::shared_ptr<UIViewController>>& childViewControllers() const { return m_children; }
    /// The child appears and disappears with this controller from its next appearance on. Its view is put in
    /// place, and didMoveToParentViewController called, by the caller.
    void addChildViewController(const std::shared_ptr<UIViewController>& child);
    void removeFromParentViewController();
    virtual void didMoveToParentViewController(const std::shared_ptr<UIViewController>& /*parent*/) {}

    /// The nearest stack that this controller is in; null if there is none.
    std::shared_ptr<UINavigationController> navigationController() const;

    /// What the stack's bar shows while this controller is on top.
    UINavigationItem& navigationItem() { return m_navigationItem; }

    /// What this controller, or one that it is in, presents; null if nothing.
    std::shared_ptr<UIViewController> presentedViewController() const;
    std::shared_ptr<UIViewController> presentingViewController() const;
    /// Puts another controller over the whole window, in the name of the outermost that this one is in. The
    /// completion follows on the main queue. While something is presented already, or this controller isn't
    /// in a window, only a line is printed: nothing is queued and the completion is never called.
    void presentViewController(const std::shared_ptr<UIViewController>& controller, bool animated,
                               Completion completion = {});
    /// Takes away what is presented here, with all that lies on it; if there is nothing, this controller
    /// itself. The completion follows on the main queue.
    void dismissViewControllerAnimated(bool animated, Completion completion = {});

    /// Pushes onto the stack that this controller is in, else presents, animated either way.
    void showViewController(const std::shared_ptr<UIViewController>& controller);

    /// For whatever puts views on the screen and takes them off: the first brings viewWillAppear or
    /// viewWillDisappear, here and then in the children that show, the second viewDidAppear or
    /// viewDidDisappear. A repeated begin is without effect, and so is an end without a begin.
    void beginAppearanceTransition(bool isAppearing, bool animated);
    void endAppearanceTransition();

protected:
    virtual std::shared_ptr<UIView> loadView();
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool /*animated*/) {}
    virtual void viewDidAppear(bool /*animated*/) {}
    virtual void viewWillDisappear(bool /*animated*/) {}
    virtual void viewDidDisappear(bool /*animated*/) {}

    /// The children whose views show while this one's does.
    virtual std::vector<std::shared_ptr<UIViewController>> shownChildren() const { return m_children; }
    /// Puts one child's view in another's place, with both's life-cycle calls if this controller's view is on
    /// the screen. Either may be null.
    void exchangeShownChild(const std::shared_ptr<UIViewController>& from,
                            const std::shared_ptr<UIViewController>& to, bool animated);

private:
    friend class UIStoryboardScene;

    enum class Appearance { disappeared, appearing, appeared, disappearing };

    bool isInWindow() const;
    UIViewController& outermost();
    const UIViewController& outermost() const;
    bool mayPresent(const UIViewController& controller) const;
    void dismissPresented(bool animated);

    /// Fills the root view. Set by the storyboard that the controller comes from.
    std::function<void(UIView& root)> m_buildViews;
    UINavigationItem m_navigationItem;
    std::shared_ptr<UIView> m_view;
    Appearance m_appearance = Appearance::disappeared;
    bool m_isAnimated = false;
    std::vector<std::shared_ptr<UIViewController>> m_children;
    /// Set by the parent, or the presenter, as long as it owns this controller.
    UIViewController* m_parent = nullptr;
    UIViewController* m_presenter = nullptr;
    std::shared_ptr<UIViewController> m_presented;
    /// Lies over the window while this controller is presented.
    std::shared_ptr<UIView> m_curtain;
};

} // namespace anadrome
