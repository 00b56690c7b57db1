#include "App/DeclareApp.h"

#include "App/SceneDelegate.h"
#include "Platform/UIKit/UIApplication.h"
#include "Views/Common/Storyboards.h"

namespace anadrome {

void declareApp() {
    registerStoryboards();
    UIApplication::sharedApplication().declareScene(
        "Default Configuration", {"Main", [] { return std::make_shared<SceneDelegate>(); }});
}

} // namespace anadrome
