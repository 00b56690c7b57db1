#pragma once

#include "Platform/Foundation/URL.h"

#include <string>

namespace anadrome {

/// The folder of this name directly under the temporary directory, made if missing. A failure is printed and
/// the URL returned all the same: whoever writes into the folder will report it.
URL workFolder(const std::string& name);

} // namespace anadrome
