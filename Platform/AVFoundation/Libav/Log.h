#pragma once

namespace anadrome::libav {

/// Sends the media libraries' own warnings to the debug log instead of standard error. Thread-safe; does its
/// work once.
void routeLibraryLog();

} // namespace anadrome::libav
