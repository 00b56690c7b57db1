#include "Desktop/System/ClipFiles.h"

#include "Desktop/System/FileAddress.h"
#include "Desktop/Texts.h"
#include "Platform/UniformTypeIdentifiers/UTType.h"

namespace anadrome::desktop {

namespace {

/// Of the types that the desktop opens with this program.
constexpr const char* extensions[] = {"mp4", "m4v", "mov",  "qt",  "3gp", "3g2", "mkv", "webm",
                                      "avi", "mpg", "mpeg", "m2v", "ts",  "mts", "m2t", "m2ts",
                                      "ogv", "ogm", "wmv",  "asf", "flv", "mxf", "dv"};

} // namespace

QStringList ClipFiles::nameFilters() {
    QStringList patterns;
    // Many dialogs tell one case from the other, and cameras write the upper one.
    for (const QString extension : extensions)
        patterns << "*." + extension << "*." + extension.toUpper();
    return {Texts::of("ClipFiles") + " (" + patterns.join(' ') + ')', Texts::of("AllFiles") + " (*)"};
}

bool ClipFiles::mayBeClip(const QUrl& address) {
    const auto named = URL::fileURLWithPath(address.path().toStdString());
    return fileConformsToType(fileAt(address).value_or(named), kUTTypeMovie);
}

} // namespace anadrome::desktop
