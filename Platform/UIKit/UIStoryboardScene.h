#pragma once

#include "Platform/Dispatch/MainThread.h"
#include "Platform/UIKit/UINavigationController.h"

#include <functional>
#include <memory>

namespace anadrome {

/// A screen as a storyboard describes it: its controller, and the function that builds its views. The front
/// end lays the views out.
class UIStoryboardScene {
public:
    /// When the view loads, the function gets the new root view: it adds views, sets their first values and
    /// the controller's outlets, and connects events with actions. The controller is destroyed on the main
    /// thread, whichever thread releases it last.
    template <class Controller>
    static UIStoryboardScene ofController(void (*buildViews)(Controller& controller, UIView& root)) {
        UIStoryboardScene scene;
        scene.m_makeController = [buildViews] {
            const std::shared_ptr<Controller> controller(new Controller, MainThreadDeleter<Controller>());
            UIViewController& base = *controller;
            base.m_buildViews = [buildViews, &self = *controller](UIView& root) { buildViews(self, root); };
            return controller;
        };
        return scene;
    }

    /// Makes the controller the root of a navigation stack.
    UIStoryboardScene& inNavigationController() {
        m_makeController = [make = std::move(m_makeController)] {
            return std::make_shared<UINavigationController>(make());
        };
        return *this;
    }

    std::shared_ptr<UIViewController> makeController() const { return m_makeController(); }

private:
    std::function<std::shared_ptr<UIViewController>()> m_makeController;
};

} // namespace anadrome
