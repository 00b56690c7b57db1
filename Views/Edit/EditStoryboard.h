#pragma once

#include "Platform/UIKit/UIStoryboardScene.h"

namespace anadrome {

/// The Edit screen: its views with their first values, and the actions that they call.
UIStoryboardScene editStoryboard();

} // namespace anadrome
