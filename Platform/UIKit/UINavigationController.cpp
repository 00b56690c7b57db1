#include "Platform/UIKit/UINavigationController.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UIView.h"

#include <algorithm>

namespace anadrome {

UINavigationController::UINavigationController(const std::shared_ptr<UIViewController>& root) {
    addChildViewController(root);
    m_stack.push_back(root);
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
    return m_stack.empty() ? nullptr : m_stack.back();
}

std::vector<std::shared_ptr<UIViewController>> UINavigationController::shownChildren() const {
    const auto top = topViewController();
    return top ? std::vector{top} : std::vector<std::shared_ptr<UIViewController>>{};
}

void UINavigationController::viewDidLoad() {
    view()->addGestureRecognizer(m_backSwipe);
    exchangeShownChild(nullptr, topViewController(), false);
}

void UINavigationController::pushViewController(const std::shared_ptr<UIViewController>& controller,
                                                bool animated) {
    if (!controller || std::find(m_stack.begin(), m_stack.end(), controller) != m_stack.end())
        fatalError("UINavigationController: what is pushed is nothing, or on the stack already");
    const auto covered = topViewController();
    addChildViewController(controller);
    m_stack.push_back(controller);
    exchangeShownChild(covered, controller, animated);
    controller->didMoveToParentViewController(shared_from_this());
    if (UIHost* host = UIApplication::sharedApplication().host())
        host->didPush(*this, *controller, animated);
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(bool animated) {
    const std::size_t depth = m_stack.size();
    return depth > 1 ? popTo(depth - 1, animated).front() : nullptr;
}

std::vector<std::shared_ptr<UIViewController>>
UINavigationController::popToRootViewControllerAnimated(bool animated) {
    return popTo(1, animated);
}

std::vector<std::shared_ptr<UIViewController>> UINavigationController::popTo(std::size_t depth,
                                                                             bool animated) {
    if (m_stack.size() <= depth)
        return {};
    const std::vector popped(m_stack.begin() + static_cast<std::ptrdiff_t>(depth), m_stack.end());
    m_stack.resize(depth);
    exchangeShownChild(popped.back(), topViewController(), animated);
    for (const auto& controller : popped) {
        controller->removeFromParentViewController();
        controller->didMoveToParentViewController(nullptr);
    }
    if (UIHost* host = UIApplication::sharedApplication().host())
        host->didPop(*this, popped, animated);
    return popped;
}

void UINavigationController::swipeBack() {
    if (m_backSwipe->isEnabled() && isViewLoaded() && view()->canBeTouched())
        popViewControllerAnimated(true);
}

} // namespace anadrome
