#pragma once

#include "Platform/Foundation/URL.h"

#include <vector>

namespace anadrome {

/// The folder of this process for files that must not outlive it. Two folders in it, on one file system and
/// with mode 0700, keep apart what lives for a job and what lives as long as the process.
///
/// It lies in "anadrome" under the user's cache folder ($XDG_CACHE_HOME, else ~/.cache), or under /var/tmp
/// when the cache folder is a RAM file system or can't be written: raw frames would fill the memory that they
/// are to spare. A lock file beside the folder is held for the process's life. A folder whose lock is free
/// belongs to a dead process and is removed when the next one starts. Sweeps don't follow links.
class TemporaryDirectory {
public:
    /// For work files, which the program may sweep at any time. All three make the folder at the first call,
    /// after sweeping those of dead processes. Thread-safe. A folder that can't be made is a fatal error: no
    /// work is possible without one.
    static const URL& current();

    /// For files that are handed to other programs: sweeps of the work files leave them alone.
    static const URL& shared();

    /// Whether a file is in either.
    static bool contains(const URL& file);

    /// Removes the folder with all in it and lets the lock go. For the end of the program: no other thread
    /// may use the folder any more, and current() names it still but doesn't bring it back. Does nothing if
    /// there was no first call, or the second time.
    static void remove();

    /// Replaces this process by a fresh run of the same program that only removes the folder, and the plain
    /// files that are named beside it, and exits with the given code. The kernel ends every other thread
    /// first, so none of them can write behind the sweep's back. Never returns. The program's main() must
    /// begin with finishRemovalIfAsked().
    [[noreturn]] static void removeByExec(int exitCode, const std::vector<URL>& alsoRemove = {});

    /// For the top of main(): if the program was started by removeByExec(), does the removal and exits.
    static void finishRemovalIfAsked(int argc, char** argv);
};

} // namespace anadrome
