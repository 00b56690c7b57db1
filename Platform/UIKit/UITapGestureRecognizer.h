#pragma once

#include "Platform/UIKit/UIGestureRecognizer.h"

#include <functional>

namespace anadrome {

/// Calls an action when its view is tapped.
class UITapGestureRecognizer : public UIGestureRecognizer {
public:
    /// The view owns the recogniser and so the action: it must hold the view's owner weakly.
    explicit UITapGestureRecognizer(std::function<void()> action);

    /// The user's tap. Without effect where it wouldn't reach the view, or while disabled.
    void tap();

private:
    const std::function<void()> m_action;
};

} // namespace anadrome
