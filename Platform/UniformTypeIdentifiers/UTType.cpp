#include "Platform/UniformTypeIdentifiers/UTType.h"

#include "Platform/Foundation/URL.h"

#include <QMimeDatabase>
#include <array>

namespace anadrome {

namespace {

/// Containers of movies whose names don't say so.
constexpr std::array containers{"application/mxf", "application/vnd.rn-realmedia", "application/vnd.ms-asf",
                                "application/ogg"};

bool isMovie(const QMimeType& type) {
    if (type.name().startsWith("video/"))
        return true;
    return std::any_of(containers.begin(), containers.end(),
                       [&](const char* container) { return type.inherits(container); });
}

} // namespace

bool fileConformsToType(const URL& file, const std::string& identifier) {
    return identifier == kUTTypeMovie &&
           isMovie(QMimeDatabase().mimeTypeForFile(QString::fromStdString(file.path())));
}

} // namespace anadrome
