#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The Title screen, as the root of the program's stack.
UIStoryboardScene titleStoryboard();

} // namespace anadrome
