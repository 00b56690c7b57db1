#pragma once

#include <nlohmann/json_fwd.hpp>

namespace anadrome::terminal {

/// Prints the object on a line of standard output, at once. Bytes of a path that are no UTF-8 become U+FFFD.
void printJsonLine(const nlohmann::json& object);

} // namespace anadrome::terminal
