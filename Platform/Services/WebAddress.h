#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace anadrome {

/// Whether the text is an absolute http or https address without spaces or control characters.
bool isWebAddress(std::string_view text);

/// The address with these names and values added to its query, escaped as needed.
std::string addressWithQuery(const std::string& address,
                             const std::vector<std::pair<std::string, std::string>>& parameters);

} // namespace anadrome
