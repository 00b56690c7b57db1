#include "Platform/UIKit/UIStoryboard.h"

#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIStoryboardScene.h"

#include <map>

namespace anadrome {

namespace {

using Scenes = std::map<std::string, std::shared_ptr<const UIStoryboardScene>>;

Scenes& registeredScenes() {
    static Scenes scenes;
    return scenes;
}

} // namespace

void UIStoryboard::registerStoryboard(const std::string& name,
                                      const std::optional<UIStoryboardScene>& initial) {
    registeredScenes()[name] = initial ? std::make_shared<const UIStoryboardScene>(*initial) : nullptr;
}

UIStoryboard UIStoryboard::storyboardWithName(const std::string& name) {
    const auto found = registeredScenes().find(name);
    if (found == registeredScenes().end())
        fatalError("There is no storyboard named " + name);
    return UIStoryboard(found->second);
}

std::shared_ptr<UIViewController> UIStoryboard::instantiateInitialViewController() const {
    return m_initial ? m_initial->makeController() : nullptr;
}

} // namespace anadrome
