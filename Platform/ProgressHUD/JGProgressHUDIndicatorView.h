#pragma once

#include "Platform/UIKit/UIView.h"

namespace anadrome {

/// The moving part of a HUD; which one it is tells what to draw.
class JGProgressHUDIndicatorView : public UIView {
public:
    /// From 0 to 1.
    float progress() const { return m_progress; }
    void setProgress(float progress) { change(m_progress, progress); }

private:
    float m_progress = 0;
};

/// A ring that turns as long as it shows.
class JGProgressHUDIndeterminateIndicatorView : public JGProgressHUDIndicatorView {};
/// A pie that fills with the progress.
class JGProgressHUDPieIndicatorView : public JGProgressHUDIndicatorView {};
/// A tick.
class JGProgressHUDSuccessIndicatorView : public JGProgressHUDIndicatorView {};

} // namespace anadrome
