#pragma once

#include <memory>

namespace anadrome {

class UIView;

/// Something that a view, or a stack of screens, understands of a user's touches. Main thread only.
class UIGestureRecognizer {
public:
    virtual ~UIGestureRecognizer() = default;

    bool isEnabled() const { return m_isEnabled; }
    void setEnabled(bool isEnabled) { m_isEnabled = isEnabled; }

    /// The view that it was added to; null if there is none.
    std::shared_ptr<UIView> view() const { return m_view.lock(); }

private:
    friend class UIView;

    bool m_isEnabled = true;
    std::weak_ptr<UIView> m_view;
};

} // namespace anadrome
