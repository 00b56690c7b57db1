#include "Terminal/CommandLine.h"

#include "Terminal/ExitCode.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>

namespace anadrome::terminal {

namespace {

const std::map<std::string, AVFileType> fileTypes{{"mov", AVFileTypeQuickTimeMovie},
                                                  {"mp4", AVFileTypeMPEG4}};

/// The type that the movie's name asks for; throws the parser's error if it asks for none.
AVFileType typeByExtension(const std::string& movie) {
    const std::size_t dot = movie.rfind('.');
    std::string extension = dot == std::string::npos ? "" : movie.substr(dot + 1);
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto known = fileTypes.find(extension);
    if (known == fileTypes.end())
        throw CLI::ValidationError("--output", "name the movie .mov or .mp4, or give --file-type");
    return known->second;
}

void describe(CLI::App& program, ReverseOptions& options, std::string& fileType) {
    program.name("anadrome-cli");
    program.set_version_flag("--version", "anadrome-cli " ANADROME_VERSION, "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.require_subcommand(1);

    CLI::App* reverse =
        program.add_subcommand("reverse", "Write a movie that plays CLIP backwards, picture and sound");
    reverse->set_help_flag("-h,--help", "Print this help and exit");
    reverse->add_option("CLIP", options.clip, "The clip to reverse")->required();
    reverse->add_option("-o,--output", options.movie, "The movie to write")->required()->type_name("MOVIE");
    reverse->add_option("--file-type", fileType, "The movie's container; by default its extension")
        ->check(CLI::IsMember(fileTypes).description(""))
        ->type_name("mov|mp4");
    reverse->add_flag("-f,--force", options.force, "Replace MOVIE if it exists");
    reverse->add_flag("--json", options.json, "Print progress and result as one JSON object a line");
    reverse->add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
    reverse->add_flag("-v,--verbose", options.verbose, "Print diagnostics to standard error");
    reverse->footer("Exit status: 0 done, 1 the job failed, 2 wrong use, 130 interrupted.");
}

} // namespace

std::variant<ReverseOptions, int> parseCommandLine(int argc, char** argv) {
    ReverseOptions options;
    std::string fileType;
    CLI::App program("Makes movies that play backwards.");
    describe(program, options, fileType);
    try {
        program.parse(argc, argv);
        options.fileType = fileType.empty() ? typeByExtension(options.movie) : fileTypes.at(fileType);
    } catch (const CLI::ParseError& outcome) {
        return program.exit(outcome, std::cout, std::cerr) == 0 ? ExitCode::done : ExitCode::wrongUse;
    }
    return options;
}

} // namespace anadrome::terminal
