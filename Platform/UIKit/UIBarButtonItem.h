#pragma once

#include <functional>

namespace anadrome {

/// Buttons whose looks and titles the system has.
enum class UIBarButtonSystemItem { done = 0 };

/// A button in a stack's bar. Main thread only.
class UIBarButtonItem {
public:
    /// The button owns the action, which must hold the button's owner weakly.
    UIBarButtonItem(UIBarButtonSystemItem systemItem, std::function<void()> action)
        : m_systemItem(systemItem), m_action(std::move(action)) {}

    UIBarButtonSystemItem systemItem() const { return m_systemItem; }

    /// The user's tap.
    void tap() const { m_action(); }

private:
    const UIBarButtonSystemItem m_systemItem;
    const std::function<void()> m_action;
};

} // namespace anadrome
