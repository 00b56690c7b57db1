#include "Desktop/Screens/SettingsScreen.h"

#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UINavigationController.h"

namespace anadrome::desktop {

bool SettingsScreen::leads(int section, int row) {
    const Deployment& deployment = Deployment::current();
    switch (section) {
    case 2:
        return !(row == 0 ? deployment.makerStorePage : deployment.makerWebSite).empty();
    case 3:
        return !deployment.reviewPage().empty();
    default:
        return true;
    }
}

void SettingsScreen::close() {
    const auto stack = controllerAs<UINavigationController>();
    if (!stack)
        return;
    if (const auto done = stack->topViewController()->navigationItem().rightBarButtonItem())
        done->tap();
}

} // namespace anadrome::desktop
