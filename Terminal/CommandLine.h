#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"

#include <string>
#include <variant>

namespace anadrome::terminal {

/// What one `anadrome-cli reverse` was asked to do.
struct ReverseOptions {
    std::string clip;
    std::string movie;
    AVFileType fileType = AVFileTypeQuickTimeMovie;
    bool force = false;
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

/// The options, or the exit code after help, the version or a complaint has been printed.
std::variant<ReverseOptions, int> parseCommandLine(int argc, char** argv);

} // namespace anadrome::terminal
