#include "Platform/UIKit/UIControl.h"

namespace anadrome {

void UIControl::setEnabled(bool isEnabled) {
    if (m_isEnabled == isEnabled)
        return;
    m_isEnabled = isEnabled;
    enabledDidChange();
    noteChange();
}

void UIControl::addAction(UIControlEvents events, std::function<void()> function) {
    m_actions.push_back({events, std::move(function)});
}

void UIControl::sendActionsForControlEvents(UIControlEvents events) {
    // An action may add others, and may take the control off its screen.
    const auto self = weak_from_this().lock();
    const auto actions = m_actions;
    for (const Action& action : actions)
        if ((static_cast<unsigned>(action.events) & static_cast<unsigned>(events)) != 0)
            action.function();
}

} // namespace anadrome
