#include "Platform/UIKit/UIWindow.h"

#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIViewController.h"
#include "Platform/UIKit/UIWindowScene.h"

namespace anadrome {

std::shared_ptr<UIWindow> UIWindow::makeInScene(const std::shared_ptr<UIWindowScene>& scene) {
    auto window = std::make_shared<UIWindow>();
    window->m_scene = scene;
    scene->m_windows.push_back(window);
    return window;
}

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> controller) {
    if (controller == m_root)
        return;
    if (const auto former = std::exchange(m_root, nullptr)) {
        if (former->presentedViewController())
            former->dismissViewControllerAnimated(false);
        former->beginAppearanceTransition(false, false);
        if (former->isViewLoaded())
            former->view()->removeFromSuperview();
        former->endAppearanceTransition();
    }
    m_root = std::move(controller);
    showRoot();
}

void UIWindow::showRoot() {
    if (!m_root || !m_isVisible)
        return;
    const std::shared_ptr<UIViewController> root = m_root;
    root->beginAppearanceTransition(true, false);
    addSubview(root->view());
    layoutIfNeeded();
    root->endAppearanceTransition();
}

void UIWindow::makeKeyAndVisible() {
    for (const auto& window : UIApplication::sharedApplication().windows())
        window->m_isKey = false;
    m_isKey = true;
    if (!std::exchange(m_isVisible, true))
        showRoot();
}

} // namespace anadrome
