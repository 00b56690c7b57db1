#include "Views/Common/ViewHelper.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/Print.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UITabBarController.h"
#include "Platform/UIKit/UIWindow.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

namespace anadrome {

namespace {

constexpr double successSeconds = 2.0;

/// The first of a stack, null of an empty one; any other controller itself.
std::shared_ptr<UIViewController> rootOfStack(const std::shared_ptr<UIViewController>& controller) {
    const auto stack = std::dynamic_pointer_cast<UINavigationController>(controller);
    if (!stack)
        return controller;
    return stack->viewControllers().empty() ? nullptr : stack->viewControllers().front();
}

} // namespace

ViewHelper::ViewHelper() : m_hud(std::make_shared<JGProgressHUD>(JGProgressHUDStyle::light)) {}

ViewHelper& ViewHelper::shared() {
    static ViewHelper instance;
    return instance;
}

JGProgressHUD& ViewHelper::renew(JGProgressHUDStyle style) {
    shared().m_hud = std::make_shared<JGProgressHUD>(style);
    return shared().hud();
}

void ViewHelper::showHud(std::shared_ptr<UIView> view) {
    DispatchQueue::main().async([view = std::move(view)] {
        JGProgressHUD& hud = renew(JGProgressHUDStyle::light);
        hud.setVibrancyEnabled(true);
        hud.showInView(view);
    });
}

void ViewHelper::showProgressHud(std::string text, std::shared_ptr<UIView> view) {
    DispatchQueue::main().async([text = std::move(text), view = std::move(view)] {
        JGProgressHUD& hud = renew(JGProgressHUDStyle::dark);
        hud.setIndicatorView(std::make_shared<JGProgressHUDPieIndicatorView>());
        hud.textLabel()->setText(text);
        hud.detailTextLabel()->setText("0%");
        hud.showInView(view);
    });
}

void ViewHelper::updateProgress(float progress) {
    DispatchQueue::main().async([progress] {
        JGProgressHUD& hud = shared().hud();
        hud.setProgress(progress);
        const float percent = progress * 100;
        constexpr float limit = 9223372036854775808.0F;
        if (!std::isfinite(percent) || percent >= limit || percent < -limit)
            fatalError("updateProgress: the fraction is no number that can be shown");
        hud.detailTextLabel()->setText(std::to_string(static_cast<std::int64_t>(percent)) + "%");
        if (progress >= 1.0F)
            hud.dismiss();
    });
}

void ViewHelper::showSuccessHud(std::shared_ptr<UIView> view, std::optional<std::string> text) {
    DispatchQueue::main().async([view = std::move(view), text = std::move(text)] {
        JGProgressHUD& hud = renew(JGProgressHUDStyle::light);
        hud.textLabel()->setText(text.value_or(""));
        hud.detailTextLabel()->setText("");
        hud.setIndicatorView(std::make_shared<JGProgressHUDSuccessIndicatorView>());
        hud.showInView(view);
        hud.dismissAfterDelay(successSeconds);
    });
}

void ViewHelper::hideHud() {
    DispatchQueue::main().async([] { shared().hud().dismiss(); });
}

void ViewHelper::showError(std::shared_ptr<UIViewController> controller, std::string message) {
    DispatchQueue::main().async([controller = std::move(controller), message = std::move(message)] {
        errorAlert(message, *controller);
    });
}

void ViewHelper::errorAlert(const std::string& message, UIViewController& controller) {
    const auto alert = std::make_shared<UIAlertController>(NSLocalizedString("Error"), message,
                                                           UIAlertControllerStyle::alert);
    alert->addAction({"OK", UIAlertActionStyle::cancel, {}});
    controller.presentViewController(alert, true);
}

std::shared_ptr<UIViewController> ViewHelper::topViewController() {
    const auto windows = UIApplication::sharedApplication().windows();
    const auto key = std::find_if(windows.begin(), windows.end(),
                                  [](const auto& window) { return window->isKeyWindow(); });
    if (key == windows.end() || !(*key)->rootViewController())
        return nullptr;
    std::shared_ptr<UIViewController> top = (*key)->rootViewController();
    while (const auto presented = top->presentedViewController())
        top = presented;
    if (const auto tabs = std::dynamic_pointer_cast<UITabBarController>(top))
        top = tabs->viewControllers()[tabs->selectedIndex()];
    return rootOfStack(top);
}

} // namespace anadrome
