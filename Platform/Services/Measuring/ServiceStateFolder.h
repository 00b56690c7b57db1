#pragma once

#include <string>

namespace anadrome {

/// Where services keep what they remember, whether it exists or not; empty if the user has no home. Any
/// thread.
std::string serviceStateFolder();

} // namespace anadrome
