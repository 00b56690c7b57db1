#pragma once

#include "Platform/UIKit/UIControl.h"

#include <map>
#include <string>

namespace anadrome {

class UILabel;

/// A push button with a title.
class UIButton : public UIControl {
public:
    UIButton();

    /// Of a state without a title of its own, the normal one's.
    const std::string& titleForState(UIControlState state) const;
    void setTitle(std::string title, UIControlState state);
    /// Shows the title of the present state.
    const std::shared_ptr<UILabel>& titleLabel() const { return m_titleLabel; }

    /// The user's tap: touch down, touch up inside.
    void tap();

protected:
    void enabledDidChange() override { showTitle(); }

private:
    void showTitle();

    std::map<UIControlState, std::string> m_titles{{UIControlState::normal, ""}};
    std::shared_ptr<UILabel> m_titleLabel;
};

} // namespace anadrome
