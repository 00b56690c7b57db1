#pragma once

#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"

#include <optional>

namespace anadrome {

/// Copies a movie into a folder, which is made if it is missing. The copy is named for the time at which the
/// movie was last modified, "2026-05-01 18.30.00.mov", with "-2" and so on if that name is taken, and keeps
/// that time. It appears under its name when it is whole, never in another file's place, however many
/// processes save at once; what fails leaves nothing behind. Errors are of PHPhotosErrorDomain.
std::optional<NSError> saveVideo(const URL& video, const URL& folder);

} // namespace anadrome
