#include "Tests/Views/StoryHost.h"

#include "Platform/Services/GADFullScreenAdViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"

namespace anadrome {

std::string StoryHost::nameOf(UIViewController& controller) {
    if (const auto* dialog = dynamic_cast<UIAlertController*>(&controller))
        return "dialog " + dialog->message();
    if (dynamic_cast<GADFullScreenAdViewController*>(&controller))
        return "ad";
    if (dynamic_cast<UIActivityViewController*>(&controller))
        return "share sheet";
    if (dynamic_cast<EditViewController*>(&controller))
        return "Edit";
    return dynamic_cast<PreviewViewController*>(&controller) ? "Preview" : "screen";
}

std::string StoryHost::nameOfHud() {
    const JGProgressHUD& hud = ViewHelper::shared().hud();
    if (!hud.isVisible())
        return "no hud";
    if (std::dynamic_pointer_cast<JGProgressHUDPieIndicatorView>(hud.indicatorView()))
        return "pie";
    return std::dynamic_pointer_cast<JGProgressHUDSuccessIndicatorView>(hud.indicatorView()) ? "tick"
                                                                                             : "ring";
}

} // namespace anadrome
