#include "Platform/UIKit/UIAlertController.h"

#include "Platform/Foundation/Print.h"

#include <algorithm>

namespace anadrome {

void UIAlertController::addAction(UIAlertAction action) {
    const auto isCancel = [](const UIAlertAction& one) { return one.style == UIAlertActionStyle::cancel; };
    if (isCancel(action) && std::any_of(m_actions.begin(), m_actions.end(), isCancel))
        fatalError("UIAlertController: a dialog has one cancel action at most");
    m_actions.push_back(std::move(action));
}

void UIAlertController::chooseAction(std::size_t index) {
    if (presentingViewController() && index < m_actions.size())
        presentingViewController()->dismissViewControllerAnimated(true, m_actions[index].handler);
}

} // namespace anadrome
