#pragma once

#include <string>
#include <vector>

namespace anadrome {

/// The language, out of those available, that the environment asks for: the first one that is listed in
/// LANGUAGE, then that of the locale, which is the first set of LC_ALL, LC_MESSAGES and LANG. "en" if none
/// fits, or if the locale is "C". Languages are two-letter codes.
std::string preferredLanguage(const std::vector<std::string>& available);

} // namespace anadrome
