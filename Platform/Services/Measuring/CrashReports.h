#pragma once

#include <string>

namespace anadrome {

/// Writes down where the program was when it crashed, for the developer to ask the user for. Nothing is sent.
class CrashReports {
public:
    /// From now on a crash (SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT) on any thread leaves a file in the
    /// folder, readable by this user alone, with the time, the program's version, the signal and the calls;
    /// then the signal takes its usual effect. The folder is made, and the oldest reports in it are removed
    /// so that a few stay.
    ///
    /// Signals that somebody else handles already stay theirs, and a program that runs under a sanitizer is
    /// left to its reports. A stack that has overflowed is told of only for the thread that calls this. To be
    /// called once, on the main thread.
    static void install(const std::string& folder);
};

} // namespace anadrome
