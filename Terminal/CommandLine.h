#pragma once

#include "Models/MovieRecipe.h"

#include <string>
#include <variant>

namespace anadrome::terminal {

/// What the command line asks for.
struct JobOptions {
    std::string clip;
    std::string movie;
    MovieRecipe recipe = MovieRecipe::reversalOnly(AVFileTypeQuickTimeMovie);
    /// The index of the quality setting: 0 low, 1 medium, 2 high. A plain reversal has none.
    int quality = 1;
    bool force = false;
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

/// The job, or the exit code after help, the version or a complaint has been printed.
using ParsedCommandLine = std::variant<JobOptions, int>;

ParsedCommandLine parseCommandLine(int argc, char** argv);

} // namespace anadrome::terminal
