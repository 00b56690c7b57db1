#pragma once

#include "Platform/Foundation/FileDescriptor.h"

#include <string>

namespace anadrome {

/// Opens a lock file, which must be no link, and waits for the lock or not. Empty on failure. The lock ends
/// with the descriptor, or with the process.
FileDescriptor openLocked(const std::string& path, int extraOpenFlags, bool wait);

} // namespace anadrome
