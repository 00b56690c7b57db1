#include "Desktop/Screens/MakeScreen.h"

#include "Desktop/Camera/CameraScreen.h"
#include "Desktop/Library/LibraryScreen.h"
#include "Desktop/Screens/AdScreen.h"
#include "Desktop/Screens/AlertScreen.h"
#include "Desktop/Screens/ConsentScreen.h"
#include "Desktop/Screens/EditScreen.h"
#include "Desktop/Screens/FilesScreen.h"
#include "Desktop/Screens/PreviewScreen.h"
#include "Desktop/Screens/SettingsScreen.h"
#include "Desktop/Screens/ShareScreen.h"
#include "Desktop/Screens/TitleScreen.h"
#include "Platform/Foundation/Print.h"
#include "Platform/PhotosUI/PHPickerViewController.h"
#include "Platform/Services/Ads/GADFullScreenAdViewController.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Platform/UIKit/UIImagePickerController.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"
#include "Views/Settings/SettingsViewController.h"
#include "Views/Title/TitleViewController.h"

namespace anadrome::desktop {

namespace {

using ControllerRef = std::shared_ptr<UIViewController>;

struct Kind {
    const char* name;
    bool (*fits)(UIViewController* controller);
    ShownScreen* (*make)(const ControllerRef& controller, QString kind, QObject* parent);
};

template <class Controller, class Screen>
constexpr Kind kind(const char* name) {
    return {name,
            [](UIViewController* controller) { return dynamic_cast<Controller*>(controller) != nullptr; },
            [](const ControllerRef& controller, QString kind, QObject* parent) -> ShownScreen* {
                return new Screen(controller, std::move(kind), parent);
            }};
}

constexpr Kind kinds[] = {
    kind<TitleViewController, TitleScreen>("Title"),
    kind<EditViewController, EditScreen>("Edit"),
    kind<PreviewViewController, PreviewScreen>("Preview"),
    kind<SettingsViewController, SettingsScreen>("Settings"),
    kind<UIAlertController, AlertScreen>("Alert"),
    kind<UIActivityViewController, ShareScreen>("ShareSheet"),
    kind<UIDocumentPickerViewController, FilesScreen>("Files"),
    kind<PHPickerViewController, LibraryScreen>("Library"),
    kind<UIImagePickerController, CameraScreen>("Camera"),
    kind<GADFullScreenAdViewController, AdScreen>("Ad"),
    kind<UMPConsentFormViewController, ConsentScreen>("Consent"),
};

} // namespace

ShownScreen* makeScreen(const ControllerRef& controller, QObject* parent) {
    // A stack over the screens is what it shows.
    const auto stack = std::dynamic_pointer_cast<UINavigationController>(controller);
    UIViewController* shown = stack ? stack->topViewController().get() : controller.get();
    for (const Kind& kind : kinds)
        if (kind.fits(shown))
            return kind.make(controller, kind.name, parent);
    fatalError("A screen was shown that has no storyboard in the window");
}

} // namespace anadrome::desktop
