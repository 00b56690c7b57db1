#pragma once

#include <functional>
#include <memory>
#include <string>

namespace anadrome {

class UIWindowSceneDelegate;

/// Windows of the program itself; no other role is asked for.
inline constexpr const char* UIWindowSceneSessionRoleApplication = "UIWindowSceneSessionRoleApplication";

/// A scene that is to be connected.
struct UISceneSession {
    std::string role = UIWindowSceneSessionRoleApplication;
};

/// Which of the declared scenes a session gets.
struct UISceneConfiguration {
    std::string name;
    std::string sessionRole;
};

/// What the program declares of a scene before it is launched.
struct UISceneDeclaration {
    /// Whose initial controller is the window's root.
    std::string storyboard;
    std::function<std::shared_ptr<UIWindowSceneDelegate>()> makeDelegate;
};

} // namespace anadrome
