#pragma once

#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

/// The screen for a controller by its kind, owned by the parent. A kind that has no storyboard is fatal.
ShownScreen* makeScreen(const std::shared_ptr<UIViewController>& controller, QObject* parent);

} // namespace anadrome::desktop
