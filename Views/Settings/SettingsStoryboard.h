#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The Settings screen, in a stack of its own whose bar has its button.
UIStoryboardScene settingsStoryboard();

} // namespace anadrome
