#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The screen for a controller by its kind: "Unknown", which can only be closed, for one that has no
/// storyboard here. Owned by the parent.
ShownScreen* makeScreen(const std::shared_ptr<UIViewController>& controller, QObject* parent);

} // namespace anadrome::desktop
