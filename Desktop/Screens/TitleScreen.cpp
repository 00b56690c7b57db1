#include "Desktop/Screens/TitleScreen.h"

#include "Platform/Services/Deployment.h"

#include <algorithm>

namespace anadrome::desktop {

bool TitleScreen::offersApps() const {
    const auto& identifiers = Deployment::current().appStripIdentifiers;
    return std::ranges::any_of(identifiers, [](const auto& identifier) { return !identifier.empty(); });
}

} // namespace anadrome::desktop
