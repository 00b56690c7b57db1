#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The views of the Title screen, which comes as the root of the program's stack.
UIStoryboardScene titleStoryboard();

} // namespace anadrome
