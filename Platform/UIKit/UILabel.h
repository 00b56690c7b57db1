#pragma once

#include "Platform/UIKit/UIView.h"

#include <string>

namespace anadrome {

/// A line of text.
class UILabel : public UIView {
public:
    UILabel() { setUserInteractionEnabled(false); }

    const std::string& text() const { return m_text; }
    void setText(std::string text) { change(m_text, std::move(text)); }

    bool isEnabled() const { return m_isEnabled; }
    void setEnabled(bool isEnabled) { change(m_isEnabled, isEnabled); }

    /// Whether the text is made smaller to fit, and to which part of its size at least; 0 sets no bound.
    bool adjustsFontSizeToFitWidth() const { return m_adjustsFontSizeToFitWidth; }
    void setAdjustsFontSizeToFitWidth(bool adjusts) { change(m_adjustsFontSizeToFitWidth, adjusts); }
    CGFloat minimumScaleFactor() const { return m_minimumScaleFactor; }
    void setMinimumScaleFactor(CGFloat factor) { change(m_minimumScaleFactor, factor); }

private:
    std::string m_text;
    bool m_isEnabled = true;
    bool m_adjustsFontSizeToFitWidth = false;
    CGFloat m_minimumScaleFactor = 0;
};

} // namespace anadrome
