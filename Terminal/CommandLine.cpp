#include "Terminal/CommandLine.h"

#include "Terminal/ExitCode.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>

namespace anadrome::terminal {

namespace {

constexpr const char* exitStatus =
    "Exit status: 0 done, 1 the job failed, 2 wrong use, 128 and the signal's number if interrupted.";

const std::map<std::string, AVFileType> fileTypes{{"mov", AVFileTypeQuickTimeMovie},
                                                  {"mp4", AVFileTypeMPEG4}};
const std::map<std::string, int> outputTypes{{"reverse", 0}, {"reverse-forward", 1}, {"forward-reverse", 2}};
const std::map<std::string, int> qualities{{"low", 0}, {"medium", 1}, {"high", 2}};

/// One of a few words; `options` lists them as help shows them.
template <typename Value>
void addChoice(CLI::App& command, const std::string& name, Value& value,
               const std::map<std::string, Value>& choices, const std::string& options,
               const std::string& description) {
    const auto choose = [&value, &choices](const std::string& word) { value = choices.at(word); };
    command.add_option_function<std::string>(name, choose, description)
        ->check(CLI::IsMember(&choices).description(""))
        ->type_name(options);
}

/// Empty, or why the text is no speed that a slider can be set to.
std::string complaintOfSpeed(const std::string& text) {
    double speed = 0;
    const bool isNumber = CLI::detail::lexical_cast(text, speed);
    if (!isNumber || !(speed > 0.05 && speed < 10.05) || std::abs(speed * 10 - std::round(speed * 10)) > 1e-6)
        return "a speed goes from 0.1 to 10.0 in steps of 0.1, and " + text + " doesn't";
    return "";
}

void addSpeed(CLI::App& command, const std::string& name, double& speed, const std::string& description) {
    command.add_option(name, speed, description)->check(complaintOfSpeed)->type_name("X");
}

void describeJob(CLI::App& command, JobOptions& options) {
    command.set_help_flag("-h,--help", "Print this help and exit");
    command.add_option("CLIP", options.clip, "The clip to work on")->required();
    command.add_option("-o,--output", options.movie, "The movie to write")->required()->type_name("MOVIE");
    addChoice(command, "--file-type", options.fileType, fileTypes, "mov|mp4",
              "The movie's container; by default its extension");
    command.add_flag("-f,--force", options.force, "Replace MOVIE if it exists");
    command.add_flag("--json", options.json, "Print progress and result as one JSON object a line");
    command.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
    command.add_flag("-v,--verbose", options.verbose, "Print diagnostics to standard error");
    command.footer(exitStatus);
}

CLI::App* addMake(CLI::App& program, MakeOptions& options) {
    CLI::App* make = program.add_subcommand("make", "Make a movie of CLIP backward, alone or joined to CLIP");
    addChoice(*make, "--output-type", options.outputType, outputTypes,
              "reverse|reverse-forward|forward-reverse", "What the movie is made of [reverse]");
    addSpeed(*make, "--reverse-speed", options.reverseSpeed,
             "How fast the backward part runs, 0.1 to 10 [1]");
    addSpeed(*make, "--normal-speed", options.normalSpeed, "How fast the forward part runs, 0.1 to 10 [1]");
    addChoice(*make, "--quality", options.quality, qualities, "low|medium|high",
              "Largest size: 640x480, 1280x720 or 1920x1080 [medium]");
    make->add_flag("--keep-metadata", options.keepMetadata, "Keep CLIP's place, date and camera");
    describeJob(*make, options);
    return make;
}

CLI::App* addReverse(CLI::App& program, ReverseOptions& options) {
    CLI::App* reverse = program.add_subcommand(
        "reverse", "Reverse CLIP in its own size and rate, picture and sound, and do nothing else");
    describeJob(*reverse, options);
    return reverse;
}

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

template <typename Options>
Options completed(const CLI::App& command, Options options) {
    if (command.count("--file-type") == 0)
        options.fileType = typeByExtension(options.movie);
    return options;
}

} // namespace

ParsedCommandLine parseCommandLine(int argc, char** argv) {
    CLI::App program("Makes movies that play backward.");
    program.name("anadrome-cli");
    program.set_version_flag("--version", "anadrome-cli " ANADROME_VERSION, "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.require_subcommand(1);
    MakeOptions makeOptions;
    ReverseOptions reverseOptions;
    const CLI::App* make = addMake(program, makeOptions);
    const CLI::App* reverse = addReverse(program, reverseOptions);
    try {
        program.parse(argc, argv);
        if (make->parsed())
            return completed(*make, makeOptions);
        return completed(*reverse, reverseOptions);
    } catch (const CLI::ParseError& outcome) {
        return program.exit(outcome, std::cout, std::cerr) == 0 ? ExitCode::done : ExitCode::wrongUse;
    }
}

} // namespace anadrome::terminal
