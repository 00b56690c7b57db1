#pragma once

#include "Platform/Foundation/Result.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace anadrome {

/// The whole content of a plain file that is meant to be small; one that is larger than the maximum (bytes),
/// a folder or a pipe is an error like a file that can't be read. Any thread.
Result<std::string> readSmallFile(const std::string& path, std::size_t maximumLength);

/// Puts the content in the place of a file, in one step: whoever reads it sees the old or the new one whole.
/// The file is for this user alone; folders that are missing are made. Doesn't wait for the disk, so a loss
/// of power may undo it. One call at a time for a path, any thread.
std::optional<NSError> replaceSmallFile(const std::string& path, std::string_view content);

} // namespace anadrome
