#pragma once

#include "Platform/UIKit/UIControl.h"

namespace anadrome {

class UISwitch : public UIControl {
public:
    bool isOn() const { return m_isOn; }
    /// Sends no event.
    void setOn(bool isOn) { change(m_isOn, isOn); }

    /// The user's tap: turns the switch over, then value changed.
    void tap();

private:
    bool m_isOn = false;
};

} // namespace anadrome
