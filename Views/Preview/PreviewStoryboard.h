#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The views of the Preview screen, with their wires.
UIStoryboardScene previewStoryboard();

} // namespace anadrome
