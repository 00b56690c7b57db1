#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The Settings screen, as the root of a stack of its own, whose bar has its button.
UIStoryboardScene settingsStoryboard();

} // namespace anadrome
