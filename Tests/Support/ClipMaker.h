#pragma once

#include "Tests/Support/ClipOptions.h"

#include <string>

namespace anadrome::testing_support {

/// Writes a clip whose pictures tell their number and whose sound tells its second. The container follows
/// from the path's extension. Throws std::runtime_error with a message for people.
void makeClip(const std::string& path, const ClipOptions& options = {});

} // namespace anadrome::testing_support
