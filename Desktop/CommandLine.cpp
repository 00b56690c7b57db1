#include "Desktop/CommandLine.h"

#include "Desktop/System/FileAddress.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace anadrome::desktop {

namespace {

constexpr int wrongUse = 2;

/// File managers may hand over addresses.
URL clipNamed(const std::string& argument) {
    const auto file = fileAt(QUrl::fromEncoded(QByteArray::fromStdString(argument)));
    return file ? *file : URL::fileURLWithPath(argument);
}

/// What lets a running instance come to the front, where windows may not do so by themselves.
std::string activationToken() {
    for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        if (const char* token = std::getenv(name); token && *token)
            return token;
    return {};
}

} // namespace

std::variant<StartRequest, int> parseCommandLine(int argc, char** argv) {
    CLI::App program("Makes a new movie that plays a clip backward.");
    program.name("anadrome");
    program.set_version_flag("-v,--version", "anadrome " ANADROME_VERSION, "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    std::vector<std::string> clips;
    program.add_option("CLIP", clips, "The clip to open; the first if there are more")->type_name("");
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& outcome) {
        return program.exit(outcome, std::cout, std::cerr) == 0 ? EXIT_SUCCESS : wrongUse;
    }
    return StartRequest{clips.empty() ? URL() : clipNamed(clips.front()), activationToken()};
}

} // namespace anadrome::desktop
