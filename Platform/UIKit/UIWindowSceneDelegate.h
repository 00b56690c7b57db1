#pragma once

#include "Platform/UIKit/UISceneConfiguration.h"

#include <memory>

namespace anadrome {

class UIScene;
class UIWindow;

/// Hears how a scene comes and goes. Main thread only.
class UIWindowSceneDelegate {
public:
    virtual ~UIWindowSceneDelegate() = default;

    virtual const std::shared_ptr<UIWindow>& window() const = 0;
    /// Called with the scene's window, whose root is in place, before the scene is connected.
    virtual void setWindow(std::shared_ptr<UIWindow> window) = 0;

    virtual void sceneWillConnectToSession(UIScene& /*scene*/, const UISceneSession& /*session*/) {}
    virtual void sceneDidDisconnect(UIScene& /*scene*/) {}
    virtual void sceneWillEnterForeground(UIScene& /*scene*/) {}
    virtual void sceneDidBecomeActive(UIScene& /*scene*/) {}
    virtual void sceneWillResignActive(UIScene& /*scene*/) {}
    virtual void sceneDidEnterBackground(UIScene& /*scene*/) {}
};

} // namespace anadrome
