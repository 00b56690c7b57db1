#pragma once

#include <string>
#include <utility>
#include <vector>

namespace anadrome {

/// The address with these names and values added to its query, escaped as needed. Any thread.
std::string addressWithQuery(const std::string& address,
                             const std::vector<std::pair<std::string, std::string>>& parameters);

} // namespace anadrome
