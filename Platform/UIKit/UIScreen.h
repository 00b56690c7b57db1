#pragma once

#include "Platform/CoreGraphics/CGGeometry.h"

namespace anadrome {

/// What the program is shown on: for a program in a window, the window's inside. Main thread only.
class UIScreen {
public:
    static UIScreen& mainScreen();

    /// In points; 420 × 860 until the front end says otherwise.
    const CGRect& bounds() const { return m_bounds; }
    /// For the front end: when its window is there, and whenever that changes its size.
    void setBounds(const CGRect& bounds) { m_bounds = bounds; }

private:
    UIScreen() = default;

    CGRect m_bounds{{0, 0}, {420, 860}};
};

} // namespace anadrome
