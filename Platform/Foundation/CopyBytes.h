#pragma once

namespace anadrome {

/// How a copy ended: the system's error number of whichever side failed, or 0.
struct CopyOutcome {
    int readError = 0;
    int writeError = 0;
};

/// Copies all of an open file into one that is empty; they share their room on the disk where it can do that.
CopyOutcome copyBytes(int from, int to);

} // namespace anadrome
