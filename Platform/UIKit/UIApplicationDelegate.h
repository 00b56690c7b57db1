#pragma once

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/UIKit/UISceneConfiguration.h"

#include <vector>

namespace anadrome {

class UIApplication;

/// What a program does as it starts. Main thread only.
class UIApplicationDelegate {
public:
    virtual ~UIApplicationDelegate() = default;

    /// Before there is any scene.
    virtual bool didFinishLaunchingWithOptions(UIApplication& application, const Dictionary& options) = 0;
    /// Which declared scene the session gets.
    virtual UISceneConfiguration configurationForConnectingSceneSession(UIApplication& application,
                                                                        const UISceneSession& session) = 0;
    virtual void didDiscardSceneSessions(UIApplication& /*application*/,
                                         const std::vector<UISceneSession>& /*sessions*/) {}
};

} // namespace anadrome
