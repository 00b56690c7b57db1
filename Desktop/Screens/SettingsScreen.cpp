#include "Desktop/Screens/SettingsScreen.h"

#include "Platform/UIKit/UINavigationController.h"

namespace anadrome::desktop {

void SettingsScreen::close() {
    const auto stack = controllerAs<UINavigationController>();
    if (!stack)
        return;
    if (const auto done = stack->topViewController()->navigationItem().rightBarButtonItem())
        done->tap();
}

} // namespace anadrome::desktop
