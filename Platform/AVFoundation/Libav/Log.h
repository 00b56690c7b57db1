#pragma once

namespace anadrome::libav {

/// Sends the media libraries' warnings and errors to the debug log, so that none reaches a terminal by
/// itself. Each becomes one line, "FFmpeg COMPONENT: text"; repetitions of the line before, and warnings
/// about what the program handles, are dropped. Thread-safe; does its work once.
void routeLibraryLog();

} // namespace anadrome::libav
