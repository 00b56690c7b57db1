#include "Platform/UIKit/UITabBarController.h"

#include "Platform/Foundation/Print.h"

namespace anadrome {

UITabBarController::UITabBarController(const std::vector<std::shared_ptr<UIViewController>>& controllers) {
    if (controllers.empty())
        fatalError("UITabBarController: made without screens");
    for (const auto& controller : controllers)
        addChildViewController(controller);
}

void UITabBarController::setSelectedIndex(std::size_t index) {
    if (index >= viewControllers().size())
        fatalError("UITabBarController: there is no such screen");
    const auto hidden = viewControllers()[m_selectedIndex];
    m_selectedIndex = index;
    exchangeShownChild(hidden, viewControllers()[index], false);
}

void UITabBarController::viewDidLoad() {
    exchangeShownChild(nullptr, viewControllers()[m_selectedIndex], false);
}

std::vector<std::shared_ptr<UIViewController>> UITabBarController::shownChildren() const {
    return {viewControllers()[m_selectedIndex]};
}

} // namespace anadrome
