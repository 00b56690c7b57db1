#pragma once

#include <memory>
#include <string>
#include <vector>

namespace anadrome {

class UIHost;
class UIScene;
class UIWindow;

/// The running program's scenes, and the front end that shows them. Main thread only.
class UIApplication {
public:
    static UIApplication& sharedApplication();

    /// Null while nothing shows the program.
    UIHost* host() const { return m_host; }
    /// The host isn't owned: it must be taken away again, by null, before it is destroyed.
    void setHost(UIHost* host) { m_host = host; }

    const std::vector<std::shared_ptr<UIScene>>& connectedScenes() const { return m_scenes; }
    void connectScene(const std::shared_ptr<UIScene>& scene);
    /// Empties the scene's windows, which brings their screens' last calls.
    void disconnectScene(const std::shared_ptr<UIScene>& scene);
    /// Of all scenes.
    std::vector<std::shared_ptr<UIWindow>> windows() const;

    /// Shows an address in the program that the user has for it. False if there is none.
    bool openURL(const std::string& address) const;

private:
    UIApplication() = default;

    UIHost* m_host = nullptr;
    std::vector<std::shared_ptr<UIScene>> m_scenes;
};

} // namespace anadrome
