#pragma once

#include <memory>
#include <vector>

namespace anadrome {

class UIWindow;
class UIWindowSceneDelegate;

enum class UISceneActivationState {
    unattached = -1,
    foregroundActive = 0,
    foregroundInactive = 1,
    background = 2
};

/// Something that an application shows itself in. Main thread only.
class UIScene {
public:
    virtual ~UIScene() = default;

    UISceneActivationState activationState() const { return m_state; }

    const std::shared_ptr<UIWindowSceneDelegate>& delegate() const { return m_delegate; }
    void setDelegate(std::shared_ptr<UIWindowSceneDelegate> delegate) { m_delegate = std::move(delegate); }

    /// For the front end: the window has the user's attention, is only seen, or isn't seen. The delegate
    /// hears of every state that lies on the way, and of none twice.
    void moveTo(UISceneActivationState state);

private:
    void stepTo(UISceneActivationState state);

    UISceneActivationState m_state = UISceneActivationState::unattached;
    std::shared_ptr<UIWindowSceneDelegate> m_delegate;
};

/// A scene of windows, which it owns.
class UIWindowScene : public UIScene {
public:
    const std::vector<std::shared_ptr<UIWindow>>& windows() const { return m_windows; }

private:
    friend class UIWindow;

    std::vector<std::shared_ptr<UIWindow>> m_windows;
};

} // namespace anadrome
