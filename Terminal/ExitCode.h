#pragma once

namespace anadrome::terminal {

/// What the program tells its caller.
enum ExitCode : int { done = 0, jobFailed = 1, wrongUse = 2, interrupted = 130 };

} // namespace anadrome::terminal
