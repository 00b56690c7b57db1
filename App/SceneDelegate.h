#pragma once

#include "Platform/UIKit/UIWindowSceneDelegate.h"

namespace anadrome {

/// The one window, and what happens each time it comes to the front. Main thread only.
class SceneDelegate : public UIWindowSceneDelegate {
public:
    const std::shared_ptr<UIWindow>& window() const override { return m_window; }
    void setWindow(std::shared_ptr<UIWindow> window) override { m_window = std::move(window); }

    void sceneDidBecomeActive(UIScene& scene) override;

private:
    std::shared_ptr<UIWindow> m_window;
};

} // namespace anadrome
