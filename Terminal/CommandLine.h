#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"

#include <string>
#include <variant>

namespace anadrome::terminal {

/// What every job is told.
struct JobOptions {
    std::string clip;
    std::string movie;
    AVFileType fileType = AVFileTypeQuickTimeMovie;
    bool force = false;
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

/// `anadrome-cli reverse`
struct ReverseOptions : JobOptions {};

/// `anadrome-cli make`
struct MakeOptions : JobOptions {
    /// The segment of the output type: 0 backward, 1 backward then forward, 2 forward then backward.
    int outputType = 0;
    /// Multiples of 0.1 from 0.1 to 10.
    double reverseSpeed = 1;
    double normalSpeed = 1;
    /// The index of the quality setting: 0 low, 1 medium, 2 high.
    int quality = 1;
    bool keepMetadata = false;
};

/// What was asked for, or the exit code after help, the version or a complaint has been printed.
using ParsedCommandLine = std::variant<MakeOptions, ReverseOptions, int>;

ParsedCommandLine parseCommandLine(int argc, char** argv);

} // namespace anadrome::terminal
