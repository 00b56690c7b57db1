#pragma once

#include "Platform/UIKit/UIControl.h"
#include "Platform/UIKit/UIImage.h"

#include <map>

namespace anadrome {

/// Chooses a number between two bounds.
class UISlider : public UIControl {
public:
    /// Always within the bounds.
    float value() const { return m_value; }
    /// Sends no event. A value that is no number changes nothing; neither does such a bound.
    void setValue(float value);
    float minimumValue() const { return m_minimum; }
    /// A bound beyond the other takes that along.
    void setMinimumValue(float minimum);
    float maximumValue() const { return m_maximum; }
    void setMaximumValue(float maximum);

    /// Null where none was set.
    UIImageRef thumbImageForState(UIControlState state) const;
    void setThumbImage(UIImageRef image, UIControlState state);

    /// Whether the user holds the thumb.
    bool isTracking() const { return m_isTracking; }

    /// The user takes the thumb: touch down. False, and nothing happens, if it is out of reach.
    bool beginTracking();
    /// The user moves the thumb: value changed, if it is another one. Without effect while not tracking.
    void trackTo(float value);
    /// The user lets go, with the finger still on the slider or not: value changed, by now not tracking any
    /// more, then touch up inside or outside.
    void endTracking(bool isInside = true);
    /// The hold ends without the user's will: touch cancel. The value stays.
    void cancelTracking();

protected:
    void enabledDidChange() override;

private:
    float clamped(float value) const;

    float m_minimum = 0;
    float m_maximum = 1;
    float m_value = 0;
    bool m_isTracking = false;
    std::map<UIControlState, UIImageRef> m_thumbImages;
};

} // namespace anadrome
