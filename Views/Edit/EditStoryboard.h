#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The views of the Edit screen, with their first values and their wires.
UIStoryboardScene editStoryboard();

} // namespace anadrome
