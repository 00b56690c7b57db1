#pragma once

#include <memory>
#include <vector>

namespace anadrome {

class UIWindow;

/// Something that an application shows itself in.
class UIScene {
public:
    virtual ~UIScene() = default;
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
