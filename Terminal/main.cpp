#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Terminal/CommandLine.h"
#include "Terminal/ExitCode.h"
#include "Terminal/Interruption.h"
#include "Terminal/MakeCommand.h"
#include "Terminal/ReverseCommand.h"

#include <QCoreApplication>
#include <clocale>
#include <csignal>
#include <iostream>
#include <malloc.h>

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

int runCommand(Command& command) {
    const Interruption interruption([&](int exitCode) { command.interrupt(exitCode); });
    command.start([](int exitCode) { QCoreApplication::exit(exitCode); });
    return QCoreApplication::exec();
}

template <class JobCommand, class Options>
int run(const Options& options) {
    routeDiagnostics(options.verbose);
    const int exitCode = [&] {
        JobCommand command(options);
        return runCommand(command);
    }();
    TemporaryDirectory::remove();
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    TemporaryDirectory::finishRemovalIfAsked(argc, argv);
    // A full disk, a file-size limit and a reader that went away are errors of the write, not the end of the
    // program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    // Many threads allocate pictures, and every heap keeps what its threads gave back.
    ::mallopt(M_ARENA_MAX, 2);
    QCoreApplication application(argc, argv);
    // Numbers on the command line and in messages have a point, in whatever country.
    std::setlocale(LC_NUMERIC, "C");
    const auto parsed = parseCommandLine(argc, argv);
    if (const int* exitCode = std::get_if<int>(&parsed))
        return *exitCode;
    if (const auto* options = std::get_if<MakeOptions>(&parsed))
        return run<MakeCommand>(*options);
    return run<ReverseCommand>(std::get<ReverseOptions>(parsed));
}
