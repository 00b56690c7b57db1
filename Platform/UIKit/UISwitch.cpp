#include "Platform/UIKit/UISwitch.h"

namespace anadrome {

void UISwitch::tap() {
    if (!acceptsTouches())
        return;
    setOn(!m_isOn);
    sendActionsForControlEvents(UIControlEvents::valueChanged);
}

} // namespace anadrome
