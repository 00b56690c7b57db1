#include "Platform/UIKit/UIApplication.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIApplicationDelegate.h"
#include "Platform/UIKit/UIHost.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Platform/UIKit/UIViewController.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowScene.h"
#include "Platform/UIKit/UIWindowSceneDelegate.h"

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

void UIApplication::declareScene(const std::string& name, UISceneDeclaration declaration) {
    m_declaredScenes[name] = std::move(declaration);
}

std::shared_ptr<UIWindowScene> UIApplication::launch(std::shared_ptr<UIApplicationDelegate> delegate) {
    m_delegate = std::move(delegate);
    m_delegate->didFinishLaunchingWithOptions(*this, {});
    const UISceneSession session;
    const UISceneConfiguration configuration =
        m_delegate->configurationForConnectingSceneSession(*this, session);
    const auto declared = m_declaredScenes.find(configuration.name);
    if (declared == m_declaredScenes.end())
        fatalError("No scene is declared under the name " + configuration.name);
    auto root =
        UIStoryboard::storyboardWithName(declared->second.storyboard).instantiateInitialViewController();
    if (!root)
        fatalError("The scene's storyboard has no initial controller: " + declared->second.storyboard);
    const auto scene = std::make_shared<UIWindowScene>();
    const auto sceneDelegate = declared->second.makeDelegate();
    scene->setDelegate(sceneDelegate);
    const auto window = UIWindow::makeInScene(scene);
    window->setRootViewController(std::move(root));
    sceneDelegate->setWindow(window);
    connectScene(scene);
    sceneDelegate->sceneWillConnectToSession(*scene, session);
    window->makeKeyAndVisible();
    return scene;
}

void UIApplication::connectScene(const std::shared_ptr<UIScene>& scene) {
    m_scenes.push_back(scene);
}

void UIApplication::disconnectScene(const std::shared_ptr<UIScene>& scene) {
    for (const auto& window : windowsOf(scene))
        window->setRootViewController(nullptr);
    std::erase(m_scenes, scene);
    if (scene->delegate())
        scene->delegate()->sceneDidDisconnect(*scene);
}

std::vector<std::shared_ptr<UIWindow>> UIApplication::windows() const {
    std::vector<std::shared_ptr<UIWindow>> all;
    for (const auto& scene : m_scenes) {
        const auto windows = windowsOf(scene);
        all.insert(all.end(), windows.begin(), windows.end());
    }
    return all;
}

void UIApplication::openURL(const std::string& address, const Dictionary&, OpenCompletion completion) const {
    const bool isOpened = m_host && m_host->openURL(address);
    if (completion)
        DispatchQueue::main().async([completion = std::move(completion), isOpened] { completion(isOpened); });
}

} // namespace anadrome
