#include "Terminal/CommandLine.h"

#include "Terminal/ExitCode.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>

namespace anadrome::terminal {

namespace {

constexpr const char* exitStatus =
    "Exit status: 0 done, 1 the job failed, 2 wrong use, 128 and the signal's number if interrupted.";

const std::map<std::string, AVFileType> fileTypes{{"mov", AVFileTypeQuickTimeMovie},
                                                  {"mp4", AVFileTypeMPEG4}};
const std::map<std::string, OutputType> outputTypes{{"reverse", OutputType::reversed},
                                                    {"reverse-forward", OutputType::reversedThenForward},
                                                    {"forward-reverse", OutputType::forwardThenReversed}};
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

/// What each command gathers before it becomes a recipe.
struct Gathered {
    JobOptions job;
    MovieRecipe::Choices choices;
};

/// Returns why the text is no speed; empty if it is one.
std::string complaintAboutSpeed(const std::string& text) {
    double speed = 0;
    if (!CLI::detail::lexical_cast(text, speed))
        return text + " is no number";
    return MovieRecipe::complaintAboutSpeed(speed);
}

void addSpeed(CLI::App& command, const std::string& name, double& speed, const std::string& description) {
    command.add_option(name, speed, description)->check(complaintAboutSpeed)->type_name("X");
}

void describeJob(CLI::App& command, Gathered& gathered) {
    JobOptions& options = gathered.job;
    command.set_help_flag("-h,--help", "Print this help and exit");
    command.add_option("CLIP", options.clip, "The clip to work on")->required();
    command.add_option("-o,--output", options.movie, "The movie to write")->required()->type_name("MOVIE");
    addChoice(command, "--file-type", gathered.choices.fileType, fileTypes, "mov|mp4",
              "The movie's container; by default its extension");
    command.add_flag("-f,--force", options.force, "Replace MOVIE if it exists");
    command.add_flag("--json", options.json, "Print progress and result as one JSON object a line");
    command.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
    command.add_flag("-v,--verbose", options.verbose, "Print diagnostics to standard error");
    command.footer(exitStatus);
}

CLI::App* addMake(CLI::App& program, Gathered& gathered) {
    CLI::App* make = program.add_subcommand("make", "Make a movie of CLIP backward, alone or joined to CLIP");
    MovieRecipe::Choices& choices = gathered.choices;
    addChoice(*make, "--output-type", choices.outputType, outputTypes,
              "reverse|reverse-forward|forward-reverse", "What the movie is made of [reverse]");
    addSpeed(*make, "--reverse-speed", choices.reverseSpeed,
             "How fast the backward part runs, 0.1 to 10 [1]");
    addSpeed(*make, "--normal-speed", choices.normalSpeed, "How fast the forward part runs, 0.1 to 10 [1]");
    addChoice(*make, "--quality", gathered.job.quality, qualities, "low|medium|high",
              "Largest size: 640x480, 1280x720 or 1920x1080 [medium]");
    make->add_flag_callback(
        "--keep-metadata", [&choices] { choices.metadata = ClipMetadata::keep; },
        "Keep CLIP's place, date and camera");
    describeJob(*make, gathered);
    return make;
}

CLI::App* addReverse(CLI::App& program, Gathered& gathered) {
    CLI::App* reverse = program.add_subcommand(
        "reverse", "Reverse CLIP in its own size and rate, picture and sound, and do nothing else");
    describeJob(*reverse, gathered);
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

/// The job of a command whose options have passed their checks.
JobOptions completed(const CLI::App& command, const Gathered& gathered, bool isReversalOnly) {
    MovieRecipe::Choices choices = gathered.choices;
    if (command.count("--file-type") == 0)
        choices.fileType = typeByExtension(gathered.job.movie);
    JobOptions options = gathered.job;
    options.recipe =
        isReversalOnly ? MovieRecipe::reversalOnly(choices.fileType) : *MovieRecipe::make(choices);
    return options;
}

} // namespace

ParsedCommandLine parseCommandLine(int argc, char** argv) {
    CLI::App program("Makes movies that play backward.");
    program.name("anadrome-cli");
    program.set_version_flag("--version", "anadrome-cli " ANADROME_VERSION, "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.require_subcommand(1);
    Gathered makeOptions;
    Gathered reverseOptions;
    const CLI::App* make = addMake(program, makeOptions);
    const CLI::App* reverse = addReverse(program, reverseOptions);
    try {
        program.parse(argc, argv);
        if (make->parsed())
            return completed(*make, makeOptions, false);
        return completed(*reverse, reverseOptions, true);
    } catch (const CLI::ParseError& outcome) {
        return program.exit(outcome, std::cout, std::cerr) == 0 ? ExitCode::done : ExitCode::wrongUse;
    }
}

} // namespace anadrome::terminal
