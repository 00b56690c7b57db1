#pragma once

#include "Platform/UIKit/UIView.h"

#include <functional>
#include <vector>

namespace anadrome {

/// What happened to a control; a set of bits.
enum class UIControlEvents : unsigned {
    touchDown = 1U << 0,
    touchUpInside = 1U << 6,
    touchUpOutside = 1U << 7,
    touchCancel = 1U << 8,
    valueChanged = 1U << 12,
};

constexpr UIControlEvents operator|(UIControlEvents first, UIControlEvents second) {
    return static_cast<UIControlEvents>(static_cast<unsigned>(first) | static_cast<unsigned>(second));
}

/// For which state of a control a title or an image is meant.
enum class UIControlState { normal, highlighted, disabled };

/// A view that the user operates. What a program sets never sends an event; the operations of a user's hand
/// do, and are without effect while the control is disabled or out of reach (see UIView::canBeTouched).
class UIControl : public UIView {
public:
    bool isEnabled() const { return m_isEnabled; }
    void setEnabled(bool isEnabled);

    /// Calls the function at each of these events, in the order of adding. The control owns the function, so
    /// it must hold the control's owner weakly.
    void addAction(UIControlEvents events, std::function<void()> function);
    /// Calls the target's function at each of these events, as long as the target lives.
    template <class Target>
    void addTarget(Target& target, void (Target::*action)(), UIControlEvents events) {
        addAction(events, [weak = target.weak_from_this(), &target, action] {
            if (const auto alive = weak.lock())
                (target.*action)();
        });
    }
    void sendActionsForControlEvents(UIControlEvents events);

protected:
    virtual void enabledDidChange() {}
    bool acceptsTouches() const { return m_isEnabled && canBeTouched(); }

private:
    struct Action {
        UIControlEvents events;
        std::function<void()> function;
    };

    bool m_isEnabled = true;
    std::vector<Action> m_actions;
};

} // namespace anadrome
