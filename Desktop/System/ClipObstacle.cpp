#include "Desktop/System/ClipObstacle.h"

#include "Desktop/Texts.h"

#include <filesystem>
#include <unistd.h>

namespace anadrome::desktop {

namespace {

/// The key of the text; null if nothing stands in the way.
const char* obstacleKey(const std::string& path) {
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(path, failure);
    if (status.type() == std::filesystem::file_type::not_found)
        return "ClipIsMissing";
    if (std::filesystem::is_directory(status))
        return "ClipIsFolder";
    const bool canBeRead = std::filesystem::is_regular_file(status) && ::access(path.c_str(), R_OK) == 0;
    return canBeRead ? nullptr : "ClipIsUnreadable";
}

} // namespace

std::optional<QString> clipObstacle(const URL& file) {
    const char* key = obstacleKey(file.path());
    if (!key)
        return std::nullopt;
    return Texts::of(key).arg(QString::fromStdString(file.lastPathComponent()));
}

} // namespace anadrome::desktop
