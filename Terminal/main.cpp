#include "Platform/Foundation/Interruption.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/ProcessSetUp.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Terminal/CommandLine.h"
#include "Terminal/JobCommand.h"

#include <QCoreApplication>
#include <cstdlib>
#include <iostream>

namespace {

using namespace anadrome;
using namespace anadrome::terminal;

/// Diagnostics are for those who ask.
void routeDiagnostics(bool verbose) {
    const LineSink toStandardError = [](std::string_view line) { std::cerr << line << std::endl; };
    const LineSink nowhere = [](std::string_view) {};
    setPrintSink(verbose ? toStandardError : nowhere);
    if (verbose)
        setDebugSink(toStandardError);
}

int run(const JobOptions& options) {
    routeDiagnostics(options.verbose);
    const auto command = std::make_shared<JobCommand>(options);
    const Interruption interruption([&](int exitCode) { command->interrupt(exitCode); });
    command->start([](int exitCode) { QCoreApplication::exit(exitCode); });
    const int exitCode = QCoreApplication::exec();
    TemporaryDirectory::remove();
    // Threads of a cancelled job may still be at their last picture, and mustn't meet the end of global
    // objects.
    if (command->isInterrupted())
        std::_Exit(exitCode);
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess(argc, argv);
    QCoreApplication application(argc, argv);
    setUpNumbers();
    const auto parsed = parseCommandLine(argc, argv);
    if (const int* exitCode = std::get_if<int>(&parsed))
        return *exitCode;
    return run(std::get<JobOptions>(parsed));
}
