#include "Tests/Views/StoryHost.h"

#include "Platform/MessageUI/MFMailComposeViewController.h"
#include "Platform/PhotosUI/PHPickerViewController.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/StoreKit/SKStoreProductViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Platform/UIKit/UIImagePickerController.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"
#include "Views/Settings/SettingsViewController.h"

namespace anadrome {

namespace {

template <class... Kinds>
std::string nameAmong(UIViewController& controller, const std::array<const char*, sizeof...(Kinds)>& names) {
    std::size_t index = 0;
    const bool isFound = ((dynamic_cast<Kinds*>(&controller) ? true : (++index, false)) || ...);
    return isFound ? names[index] : "screen";
}

} // namespace

std::string StoryHost::nameOf(UIViewController& controller) {
    if (const auto* dialog = dynamic_cast<UIAlertController*>(&controller))
        return "dialog " + dialog->message();
    if (auto* stack = dynamic_cast<UINavigationController*>(&controller))
        return nameOf(*stack->topViewController());
    return nameAmong<GADFullScreenAdViewController, UIActivityViewController, UIImagePickerController,
                     PHPickerViewController, UIDocumentPickerViewController, MFMailComposeViewController,
                     SKStoreProductViewController, SettingsViewController, EditViewController,
                     PreviewViewController>(controller,
                                            {"ad", "share sheet", "camera", "library", "files", "mail",
                                             "store sheet", "Settings", "Edit", "Preview"});
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
