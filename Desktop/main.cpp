#include "Desktop/CommandLine.h"
#include "Desktop/DesktopApp.h"
#include "Desktop/System/OneInstance.h"
#include "Platform/Foundation/Interruption.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/PartialFile.h"
#include "Platform/Foundation/ProcessSetUp.h"
#include "Platform/Foundation/TemporaryDirectory.h"

#include <QGuiApplication>

namespace {

using namespace anadrome;
using namespace anadrome::desktop;

/// Whatever is still at work on other threads, a job or a look-up at a name server that never answers, ends
/// with this and isn't waited for.
[[noreturn]] void endProgram(int exitCode) {
    NSUserDefaults::standardUserDefaults().synchronize();
    TemporaryDirectory::removeByExec(exitCode, PartialFile::all());
}

bool isHandedOver(int argc, char** argv, const OneInstance& instance, const StartRequest& request) {
    // Goes before the application with a display comes.
    const QCoreApplication application(argc, argv);
    return instance.handOver(request);
}

[[noreturn]] void run(int argc, char** argv, OneInstance& instance, const StartRequest& request) {
    QGuiApplication application(argc, argv);
    const Interruption interruption(endProgram);
    setUpNumbers();
    QGuiApplication::setApplicationName("anadrome");
    QGuiApplication::setApplicationVersion(ANADROME_VERSION);
    QGuiApplication::setDesktopFileName("anadrome");
    DesktopApp app;
    instance.listen([&app](const StartRequest& later) { app.startAgain(later); });
    if (!request.clip.empty())
        app.host().openFile(request.clip);
    endProgram(QGuiApplication::exec());
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess(argc, argv);
    const auto parsed = parseCommandLine(argc, argv);
    if (const int* exitCode = std::get_if<int>(&parsed))
        return *exitCode;
    const auto& request = std::get<StartRequest>(parsed);
    OneInstance instance;
    if (!instance.isFirst() && isHandedOver(argc, argv, instance, request))
        return EXIT_SUCCESS;
    run(argc, argv, instance, request);
}
