#pragma once

#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <optional>

namespace anadrome::desktop {

/// Copies a file over what has that name, if anything: that is whole until the copy is. Blocks; any thread.
std::optional<NSError> copyReplacing(const URL& source, const URL& target);

} // namespace anadrome::desktop
