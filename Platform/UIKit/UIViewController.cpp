#include "Platform/UIKit/UIViewController.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIScreen.h"
#include "Platform/UIKit/UIView.h"

#include <utility>

namespace anadrome {

UIViewController::~UIViewController() {
    if (m_presented)
        dismissPresented(false);
    for (const auto& child : m_children)
        child->m_parent = nullptr;
}

std::shared_ptr<UIView> UIViewController::loadView() {
    return std::make_shared<UIView>();
}

const std::shared_ptr<UIView>& UIViewController::view() {
    if (m_view)
        return m_view;
    m_view = loadView();
    if (m_buildViews) {
        m_view->setFrame(UIScreen::mainScreen().bounds());
        m_buildViews(*m_view);
    }
    viewDidLoad();
    return m_view;
}

std::shared_ptr<UIViewController> UIViewController::parentViewController() const {
    return m_parent ? m_parent->weak_from_this().lock() : nullptr;
}

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& child) {
    if (!child || child.get() == this)
        fatalError("UIViewController: a controller can't be its own child, nor can none be one");
    const std::shared_ptr<UIViewController> kept = child;
    kept->removeFromParentViewController();
    kept->m_parent = this;
    m_children.push_back(kept);
}

void UIViewController::removeFromParentViewController() {
    if (!m_parent)
        return;
    const auto self = weak_from_this().lock();
    UIViewController& parent = *std::exchange(m_parent, nullptr);
    std::erase(parent.m_children, self);
}

std::shared_ptr<UINavigationController> UIViewController::navigationController() const {
    for (auto parent = parentViewController(); parent; parent = parent->parentViewController())
        if (auto stack = std::dynamic_pointer_cast<UINavigationController>(parent))
            return stack;
    return nullptr;
}

void UIViewController::showViewController(const std::shared_ptr<UIViewController>& controller) {
    if (const auto stack = navigationController())
        stack->pushViewController(controller, true);
    else
        presentViewController(controller, true);
}

void UIViewController::beginAppearanceTransition(bool isAppearing, bool animated) {
    const bool isDone = m_appearance == Appearance::appeared || m_appearance == Appearance::appearing;
    if (isDone == isAppearing)
        return;
    view();
    m_appearance = isAppearing ? Appearance::appearing : Appearance::disappearing;
    m_isAnimated = animated;
    if (isAppearing)
        viewWillAppear(animated);
    else
        viewWillDisappear(animated);
    for (const auto& child : shownChildren())
        child->beginAppearanceTransition(isAppearing, animated);
}

void UIViewController::endAppearanceTransition() {
    if (m_appearance == Appearance::appearing) {
        m_appearance = Appearance::appeared;
        viewDidAppear(m_isAnimated);
    } else if (m_appearance == Appearance::disappearing) {
        m_appearance = Appearance::disappeared;
        viewDidDisappear(m_isAnimated);
    }
    for (const auto& child : shownChildren())
        child->endAppearanceTransition();
}

void UIViewController::exchangeShownChild(const std::shared_ptr<UIViewController>& from,
                                          const std::shared_ptr<UIViewController>& to, bool animated) {
    if (!isViewLoaded() || from == to)
        return;
    const bool isSeen = m_appearance == Appearance::appeared || m_appearance == Appearance::appearing;
    if (to)
        to->view();
    if (from && isSeen)
        from->beginAppearanceTransition(false, animated);
    if (to && isSeen)
        to->beginAppearanceTransition(true, animated);
    if (from && from->isViewLoaded())
        from->view()->removeFromSuperview();
    if (to) {
        m_view->addSubview(to->view());
        to->view()->layoutIfNeeded();
    }
    if (from)
        from->endAppearanceTransition();
    // While this controller itself is still appearing, its own end brings the child's.
    if (to && m_appearance == Appearance::appeared)
        to->endAppearanceTransition();
}

} // namespace anadrome
