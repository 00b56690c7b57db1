#include "Platform/UIKit/UIApplication.h"

#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowScene.h"

namespace anadrome {

namespace {

std::vector<std::shared_ptr<UIWindow>> windowsOf(const std::shared_ptr<UIScene>& scene) {
    const auto windowScene = std::dynamic_pointer_cast<UIWindowScene>(scene);
    return windowScene ? windowScene->windows() : std::vector<std::shared_ptr<UIWindow>>{};
}

} // namespace

UIApplication& UIApplication::sharedApplication() {
    static UIApplication instance;
    return instance;
}

void UIApplication::connectScene(const std::shared_ptr<UIScene>& scene) {
    m_scenes.push_back(scene);
}

void UIApplication::disconnectScene(const std::shared_ptr<UIScene>& scene) {
    for (const auto& window : windowsOf(scene))
        window->setRootViewController(nullptr);
    std::erase(m_scenes, scene);
}

std::vector<std::shared_ptr<UIWindow>> UIApplication::windows() const {
    std::vector<std::shared_ptr<UIWindow>> all;
    for (const auto& scene : m_scenes) {
        const auto windows = windowsOf(scene);
        all.insert(all.end(), windows.begin(), windows.end());
    }
    return all;
}

bool UIApplication::openURL(const std::string& address) const {
    return m_host && m_host->openURL(address);
}

} // namespace anadrome
