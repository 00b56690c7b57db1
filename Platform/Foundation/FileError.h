#pragma once

#include "Platform/Foundation/NSError.h"

#include <string>

namespace anadrome {

/// What was being done to a file or folder when a system call failed.
enum class FileAction { read, write, createFolder, remove };

/// The error of NSCocoaErrorDomain for a failed system call, with that call's own error underneath and a
/// sentence that names the item and the cause.
NSError fileError(FileAction action, int errnoValue, const std::string& path);

} // namespace anadrome
