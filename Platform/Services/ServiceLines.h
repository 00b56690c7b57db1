#pragma once

#include <string_view>

namespace anadrome {

enum class OutsideService { ads, consent, remoteConfiguration };

/// Prints a line about an outside service if that is deployed. Otherwise it is a debug line: a service that
/// nobody configured has nothing to report to a user. Main thread only.
void printServiceLine(OutsideService service, std::string_view line);

} // namespace anadrome
