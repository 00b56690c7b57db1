#pragma once

#include "App/AppDelegate.h"
#include "App/DeclareApp.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIWindowSceneDelegate.h"
#include "Tests/Support/Environment.h"
#include "Tests/Views/ScreenTest.h"

namespace anadrome {

/// The app from its launch on, with folders of its own. Each test is to run in a process of its own, since a
/// program is launched once.
class LaunchTest : public ScreenTest {
protected:
    LaunchTest() {
        Deployment::setCurrent({});
        declareApp();
    }
    ~LaunchTest() override {
        if (m_scene)
            UIApplication::sharedApplication().disconnectScene(m_scene);
    }

    void launch() {
        m_scene = UIApplication::sharedApplication().launch(m_delegate);
        m_stack = std::dynamic_pointer_cast<UINavigationController>(
            m_scene->delegate()->window()->rootViewController());
    }
    /// Taps the button of the form that is shown.
    void acceptConsent() const { presented<UMPConsentFormViewController>()->views().accept->tap(); }
    bool isPrinted(const std::string& line) const { return timesPrinted(line) > 0; }
    long timesPrinted(const std::string& line) const {
        const auto lines = m_host.lines();
        return std::ranges::count(lines, line);
    }
    void activate() {
        m_scene->moveTo(UISceneActivationState::background);
        m_scene->moveTo(UISceneActivationState::foregroundActive);
    }

    const testing_support::Environment m_home{"HOME", m_folder.path()};
    const testing_support::Environment m_state{"XDG_STATE_HOME", m_folder.file("state")};
    const testing_support::Environment m_configuration{"XDG_CONFIG_HOME", m_folder.file("config")};
    const std::shared_ptr<AppDelegate> m_delegate = std::make_shared<AppDelegate>();
    std::shared_ptr<UIWindowScene> m_scene;
};

} // namespace anadrome
