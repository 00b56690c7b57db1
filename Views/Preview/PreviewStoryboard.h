#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The Preview screen: its views, and the actions that they call.
UIStoryboardScene previewStoryboard();

} // namespace anadrome
