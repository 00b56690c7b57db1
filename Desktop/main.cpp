#include "Desktop/DesktopApp.h"
#include "Platform/Foundation/ProcessSetUp.h"
#include "Platform/Foundation/TemporaryDirectory.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QGuiApplication>

namespace {

using namespace anadrome;

/// The clip that the program is started with; empty for none. Ends the program for --help, --version and what
/// can't be understood.
QUrl clipOnCommandLine(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Makes a new movie that plays a clip backwards.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("clip", "The clip to open.", "[CLIP]");
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        return {};
    const QUrl url(arguments.first());
    return url.isLocalFile() ? url : QUrl::fromLocalFile(QFileInfo(arguments.first()).absoluteFilePath());
}

int run(const QUrl& clip) {
    desktop::DesktopApp app;
    if (!clip.isEmpty())
        app.host().openClip(clip);
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess(argc, argv);
    QGuiApplication application(argc, argv);
    setUpNumbers();
    QGuiApplication::setApplicationName("anadrome");
    QGuiApplication::setApplicationVersion(ANADROME_VERSION);
    QGuiApplication::setDesktopFileName("anadrome");
    const int exitCode = run(clipOnCommandLine(application));
    TemporaryDirectory::remove();
    return exitCode;
}
