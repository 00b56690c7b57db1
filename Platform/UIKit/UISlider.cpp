#include "Platform/UIKit/UISlider.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

float UISlider::clamped(float value) const {
    return std::clamp(value, m_minimum, m_maximum);
}

void UISlider::setValue(float value) {
    if (!std::isnan(value))
        change(m_value, clamped(value));
}

void UISlider::setMinimumValue(float minimum) {
    if (std::isnan(minimum))
        return;
    m_minimum = minimum;
    m_maximum = std::max(m_maximum, minimum);
    m_value = clamped(m_value);
    noteChange();
}

void UISlider::setMaximumValue(float maximum) {
    if (std::isnan(maximum))
        return;
    m_maximum = maximum;
    m_minimum = std::min(m_minimum, maximum);
    m_value = clamped(m_value);
    noteChange();
}

UIImageRef UISlider::thumbImageForState(UIControlState state) const {
    const auto found = m_thumbImages.find(state);
    return found != m_thumbImages.end() ? found->second : nullptr;
}

void UISlider::setThumbImage(UIImageRef image, UIControlState state) {
    change(m_thumbImages[state], std::move(image));
}

bool UISlider::beginTracking() {
    if (m_isTracking || !acceptsTouches())
        return false;
    m_isTracking = true;
    sendActionsForControlEvents(UIControlEvents::touchDown);
    return true;
}

void UISlider::trackTo(float value) {
    const float before = m_value;
    if (!m_isTracking)
        return;
    setValue(value);
    if (m_value != before)
        sendActionsForControlEvents(UIControlEvents::valueChanged);
}

void UISlider::endTracking(bool isInside) {
    if (!std::exchange(m_isTracking, false))
        return;
    const auto self = weak_from_this().lock();
    sendActionsForControlEvents(UIControlEvents::valueChanged);
    sendActionsForControlEvents(isInside ? UIControlEvents::touchUpInside : UIControlEvents::touchUpOutside);
}

void UISlider::cancelTracking() {
    if (std::exchange(m_isTracking, false))
        sendActionsForControlEvents(UIControlEvents::touchCancel);
}

void UISlider::enabledDidChange() {
    if (!isEnabled())
        cancelTracking();
}

} // namespace anadrome
