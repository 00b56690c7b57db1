#pragma once

#include <string>
#include <vector>

namespace anadrome {

/// The hand-over from a process that wants its folder removed to the fresh run of itself that does it. What
/// to remove travels in a sealed memory file, inherited by its descriptor: unlike arguments or the
/// environment it can't be typed, so nobody makes the program remove something by its command line.
struct RemovalOrder {
    int exitCode = 0;
    /// The process's temporary folder; empty if there is none.
    std::string folder;
    /// Plain files or links; anything else by these names stays.
    std::vector<std::string> files;
};

/// Removes what the order names, as far as that is possible. Other threads, or other programs' sweeps, may be
/// at work in the folder.
void carryOut(const RemovalOrder& order);

/// Becomes a fresh run of the program that carries the order out. Returns only if that isn't possible.
void execToCarryOut(const RemovalOrder& order);

/// In such a fresh run: carries the order out and exits. In any other: returns.
void carryOutInheritedOrder(int argc, char** argv);

} // namespace anadrome
