#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace anadrome::testing_support {

/// How one run of anadrome-cli ended.
struct CommandResult {
    int exitCode = -1; ///< minus the signal's number if one killed it
    std::string out = {};
    std::string err = {};
};

/// What surrounds a run.
struct CommandSurroundings {
    std::filesystem::path cache = {};         ///< the user's cache folder
    std::filesystem::path configuration = {}; ///< the user's configuration folder, if not empty
    long fileSizeLimit = -1;                  ///< bytes, none if negative
    int signal = 0;                           ///< sent once the progress has come so far:
    int signalAtPercent = 0;
};

/// Runs anadrome-cli and waits for it.
CommandResult runCli(const std::vector<std::string>& arguments, const CommandSurroundings& surroundings);

} // namespace anadrome::testing_support
