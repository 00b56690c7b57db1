#pragma once

namespace anadrome {

/// How a copy ended: the system's error number of whichever side failed, or 0.
struct CopyOutcome {
    int readError = 0;
    int writeError = 0;
};

/// Copies all that comes from one open file to another, from where they stand.
CopyOutcome copyBytes(int from, int to);

} // namespace anadrome
