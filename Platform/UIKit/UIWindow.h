#pragma once

#include "Platform/UIKit/UIView.h"

namespace anadrome {

class UIViewController;
class UIWindowScene;

/// The root of a view tree. Owned by its scene.
class UIWindow : public UIView {
public:
    static std::shared_ptr<UIWindow> makeInScene(const std::shared_ptr<UIWindowScene>& scene);

    std::shared_ptr<UIWindowScene> windowScene() const { return m_scene.lock(); }

    const std::shared_ptr<UIViewController>& rootViewController() const { return m_root; }
    /// Takes the former root off, with all that it presents. Null leaves the window empty.
    void setRootViewController(std::shared_ptr<UIViewController> controller);

    bool isKeyWindow() const { return m_isKey; }
    /// Brings the root controller's view onto the screen.
    void makeKeyAndVisible();

private:
    void showRoot();

    std::weak_ptr<UIWindowScene> m_scene;
    std::shared_ptr<UIViewController> m_root;
    bool m_isKey = false;
    bool m_isVisible = false;
};

} // namespace anadrome
