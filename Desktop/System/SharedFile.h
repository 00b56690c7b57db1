#pragma once

#include "Platform/Foundation/URL.h"

namespace anadrome::desktop {

/// What a movie is called where the user sees it: after the time at which it was made.
std::string displayName(const URL& movie);

/// The movie for other programs, under its display name. It stays as long as the program runs, also when the
/// movie itself is removed, as by a sweep of the work files. The movie itself where a file can't have two
/// names.
URL sharedFile(const URL& movie);

} // namespace anadrome::desktop
