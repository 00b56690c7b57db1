#pragma once

#include "Platform/Foundation/URL.h"

#include <QString>
#include <optional>

namespace anadrome::desktop {

/// Why a file can't be a clip, in words for the user, as far as a look at the disk tells; nothing if it may
/// be one.
std::optional<QString> clipObstacle(const URL& file);

} // namespace anadrome::desktop
