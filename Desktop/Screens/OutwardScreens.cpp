#include "Desktop/Screens/OutwardScreens.h"

#include "Platform/MessageUI/MFMailComposeViewController.h"
#include "Platform/UIKit/UINavigationController.h"

namespace anadrome::desktop {

void SettingsScreen::close() {
    const auto stack = controllerAs<UINavigationController>();
    if (!stack)
        return;
    if (const auto done = stack->topViewController()->navigationItem().rightBarButtonItem())
        done->tap();
}

void MailScreen::close() {
    if (const auto composer = controllerAs<MFMailComposeViewController>())
        composer->finish(MFMailComposeResult::cancelled);
}

} // namespace anadrome::desktop
