#pragma once

#include <string_view>

namespace anadrome {

/// Whether that is a whole and well-formed address of a web server's page: http or https, with a host and
/// without a user's name or password. Any thread.
bool isHttpAddress(std::string_view address);

} // namespace anadrome
