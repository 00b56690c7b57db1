#pragma once

#include "Desktop/System/StartRequest.h"

#include <variant>

namespace anadrome::desktop {

/// What the program is started for, or the exit code after help, the version or a complaint has been printed.
/// Needs no display.
std::variant<StartRequest, int> parseCommandLine(int argc, char** argv);

} // namespace anadrome::desktop
