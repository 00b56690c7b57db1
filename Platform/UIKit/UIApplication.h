#pragma once

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/UIKit/UISceneConfiguration.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace anadrome {

class UIApplicationDelegate;
class UIHost;
class UIScene;
class UIWindow;
class UIWindowScene;

/// The running program's scenes, and the front end that shows them. Main thread only.
class UIApplication {
public:
    static UIApplication& sharedApplication();

    /// Null while nothing shows the program.
    UIHost* host() const { return m_host; }
    /// The host isn't owned: it must be taken away again, by null, before it is destroyed.
    void setHost(UIHost* host) { m_host = host; }

    /// Makes a scene known by its name, before the launch.
    void declareScene(const std::string& name, UISceneDeclaration declaration);
    /// Starts the program: the delegate's launch, then the scene that it names, with the declared storyboard
    /// in a key window; in the background until the front end moves it. A name that isn't declared, and a
    /// storyboard without an initial controller, are fatal.
    std::shared_ptr<UIWindowScene> launch(std::shared_ptr<UIApplicationDelegate> delegate);
    /// Null before the launch.
    const std::shared_ptr<UIApplicationDelegate>& delegate() const { return m_delegate; }

    const std::vector<std::shared_ptr<UIScene>>& connectedScenes() const { return m_scenes; }
    void connectScene(const std::shared_ptr<UIScene>& scene);
    /// Empties the scene's windows, which brings their screens' last calls; then its delegate hears of it.
    void disconnectScene(const std::shared_ptr<UIScene>& scene);
    /// Of all scenes.
    std::vector<std::shared_ptr<UIWindow>> windows() const;

    using OpenCompletion = std::function<void(bool success)>;

    /// Shows an address in the program that the user has for it. The completion follows on the main queue. No
    /// options are known.
    void openURL(const std::string& address, const Dictionary& options = {},
                 OpenCompletion completion = {}) const;

private:
    UIApplication() = default;

    UIHost* m_host = nullptr;
    std::map<std::string, UISceneDeclaration> m_declaredScenes;
    std::shared_ptr<UIApplicationDelegate> m_delegate;
    std::vector<std::shared_ptr<UIScene>> m_scenes;
};

} // namespace anadrome
