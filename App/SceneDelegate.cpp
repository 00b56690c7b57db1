#include "App/SceneDelegate.h"

#include "Ads/AppOpenAdManager.h"
#include "App/AppDelegate.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIApplication.h"

#include <limits>

namespace anadrome {

void SceneDelegate::sceneDidBecomeActive(UIScene&) {
    const auto app = std::dynamic_pointer_cast<AppDelegate>(UIApplication::sharedApplication().delegate());
    if (!app)
        fatalError("The application has no delegate of its own");
    if (app->viewAppearCount() == std::numeric_limits<long>::max())
        fatalError("The scene became active too often to be counted");
    app->setViewAppearCount(app->viewAppearCount() + 1);
    AppOpenAdManager::shared().presentIfReady();
}

} // namespace anadrome
