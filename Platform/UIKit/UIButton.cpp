#include "Platform/UIKit/UIButton.h"

#include "Platform/UIKit/UILabel.h"

namespace anadrome {

UIButton::UIButton() : m_titleLabel(std::make_shared<UILabel>()) {
    addSubview(m_titleLabel);
}

const std::string& UIButton::titleForState(UIControlState state) const {
    const auto own = m_titles.find(state);
    return own != m_titles.end() ? own->second : m_titles.at(UIControlState::normal);
}

void UIButton::setTitle(std::string title, UIControlState state) {
    m_titles[state] = std::move(title);
    showTitle();
    noteChange();
}

void UIButton::showTitle() {
    m_titleLabel->setText(titleForState(isEnabled() ? UIControlState::normal : UIControlState::disabled));
}

void UIButton::tap() {
    if (!acceptsTouches())
        return;
    const auto self = weak_from_this().lock();
    sendActionsForControlEvents(UIControlEvents::touchDown);
    sendActionsForControlEvents(UIControlEvents::touchUpInside);
}

} // namespace anadrome
