#include "Platform/Services/Measuring/InstallIdentifier.h"

#include "Platform/Foundation/FileLock.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/SmallFile.h"

#include <QUuid>
#include <fcntl.h>

namespace anadrome {

namespace {

QString asText(const QUuid& identifier) {
    return identifier.toString(QUuid::WithoutBraces);
}

bool isIdentifier(const std::string& text) {
    const QUuid read = QUuid::fromString(QString::fromStdString(text));
    return !read.isNull() && asText(read).toStdString() == text;
}

} // namespace

std::string installIdentifier(const std::string& path) {
    const FileDescriptor lock = openLocked(path + ".lock", O_CREAT, true);
    if (!lock)
        return {};
    constexpr std::size_t longest = 64;
    if (const auto kept = readSmallFile(path, longest); kept && isIdentifier(*kept))
        return *kept;
    std::string made = asText(QUuid::createUuid()).toStdString();
    if (const auto error = replaceSmallFile(path, made)) {
        debugLog("The installation's identifier can't be kept: " + error->localizedDescription());
        return {};
    }
    return made;
}

} // namespace anadrome
