#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace anadrome {

/// Reads lines of the form "key" = "value"; in UTF-8, with C's comments and escapes and \Uxxxx for a
/// character. Nothing if any of it is malformed: a table is read whole or not at all.
std::optional<std::map<std::string, std::string>> parseStringsTable(std::string_view text);

} // namespace anadrome
