#pragma once

#include "Platform/UIKit/NSLayoutConstraint.h"

namespace anadrome {

/// A region of a view that nothing of the system covers. In a window that is the whole view, so its measures
/// are the view's. For immediate use: it refers to the view.
class UILayoutGuide {
public:
    explicit UILayoutGuide(UIView& view) : m_view(view) {}

    UIView& owningView() const { return m_view; }
    NSLayoutAnchor centerXAnchor() const { return {m_view, NSLayoutAttribute::centerX}; }
    NSLayoutAnchor bottomAnchor() const { return {m_view, NSLayoutAttribute::bottom}; }

private:
    UIView& m_view;
};

} // namespace anadrome
