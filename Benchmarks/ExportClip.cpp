// Runs one export of VideoEncoder on files, for the benchmarks: exits with 0, or 1 and the message.

#include "Models/VideoEncoder.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSUserDefaults.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <iostream>
#include <malloc.h>

namespace {

using namespace anadrome;

struct Options {
    std::string operation;
    std::vector<std::string> inputs;
    std::string output;
    double speed = 1;
    int quality = 1;
};

void end(bool success, const std::optional<std::string>& message) {
    if (message)
        std::cerr << *message << std::endl;
    QCoreApplication::exit(success ? 0 : 1);
}

void run(VideoEncoder& encoder, const Options& options) {
    const auto url = [](const std::string& path) { return URL::fileURLWithPath(path); };
    const AVFileType fileType = options.output.ends_with(".mov") ? AVFileTypeQuickTimeMovie : AVFileTypeMPEG4;
    const auto ignoreProgress = [](float) {};
    if (options.operation == "speed")
        encoder.changeSpeed(url(options.inputs.at(0)), url(options.output), fileType, options.speed,
                            ignoreProgress, end);
    else if (options.operation == "merge")
        encoder.merge(url(options.inputs.at(0)), url(options.inputs.at(1)), url(options.output), fileType,
                      ignoreProgress, end);
    else
        encoder.compressVideo(url(options.inputs.at(0)), url(options.inputs.at(0)), url(options.output),
                              fileType, [](const Result<URL>& result) {
                                  end(static_cast<bool>(result),
                                      result ? std::nullopt
                                             : std::optional(result.error().localizedDescription()));
                              });
}

} // namespace

int main(int argc, char** argv) {
    ::mallopt(M_ARENA_MAX, 2);
    QCoreApplication application(argc, argv);
    CLI::App parser("Runs one export of VideoEncoder.");
    Options options;
    parser.add_option("operation", options.operation)
        ->required()
        ->check(CLI::IsMember({"speed", "merge", "compress"}));
    parser.add_option("inputs", options.inputs)->required()->check(CLI::ExistingFile);
    parser.add_option("-o", options.output)->required();
    parser.add_option("--speed", options.speed);
    parser.add_option("--quality", options.quality)->check(CLI::Range(0, 2));
    CLI11_PARSE(parser, argc, argv);

    // An export needs an output that doesn't exist, and the rounds of a benchmark give the same one.
    NSFileManager::defaultManager().removeItemAtPath(options.output);
    NSUserDefaults::standardUserDefaults().keepInMemory();
    NSUserDefaults::standardUserDefaults().setInteger(options.quality, "resolutionIndexKey");
    VideoEncoder encoder([](float) {});
    DispatchQueue::main().async([&] { run(encoder, options); });
    return QCoreApplication::exec();
}
