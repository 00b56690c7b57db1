#pragma once

#include <functional>
#include <string_view>

namespace anadrome {

/// Takes one line, without its line break. Called from any thread, one call at a time.
using LineSink = std::function<void(std::string_view line)>;

/// Writes a diagnostic line to the print sink, which is standard output unless a front end set another.
/// Any thread.
void print(std::string_view line);

/// Composes a line for developers. It goes nowhere unless a front end set a debug sink. Any thread.
void debugLog(std::string_view line);

/// An empty sink restores the default. A sink must not itself print.
void setPrintSink(LineSink sink);
void setDebugSink(LineSink sink);

/// Ends the program because an invariant is broken: writes the message to standard error and aborts.
/// Never for failures that can be expected of input, disk or network.
[[noreturn]] void fatalError(std::string_view message);

} // namespace anadrome
