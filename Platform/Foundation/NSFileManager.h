#pragma once

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"

#include <optional>
#include <string>
#include <vector>

namespace anadrome {

/// Key of attributesOfItemAtPath(): the size in bytes, a 64-bit integer.
inline constexpr const char* NSFileSize = "NSFileSize";

/// Files and folders by their plain paths. Stateless; any thread. Links are never followed when removing.
/// Errors are of NSCocoaErrorDomain with the system's own error underneath.
class NSFileManager {
public:
    static NSFileManager& defaultManager();

    /// A folder that is this process's alone, on disk, mode 0700, made at the first call; see
    /// TemporaryDirectory.
    URL temporaryDirectory() const;

    /// Sets *isDirectory, if given, only when the item exists.
    bool fileExistsAtPath(const std::string& path, bool* isDirectory = nullptr) const;

    /// With intermediates an existing folder is no error; without it is error 516.
    std::optional<NSError> createDirectoryAtPath(const std::string& path,
                                                 bool withIntermediateDirectories) const;

    /// Names without "." and "..", hidden ones included, in no certain order. A missing folder is error 260.
    Result<std::vector<std::string>> contentsOfDirectoryAtPath(const std::string& path) const;

    /// Removes a file, a link itself, or a folder with all in it. A missing item is error 4.
    std::optional<NSError> removeItemAtPath(const std::string& path) const;

    /// Copies a file with its permissions and dates; on file systems that can, both share their bytes until
    /// one is written to. A missing source is error 260, an existing target 516, which stays as it is, a
    /// missing folder of the target 4, a full disk 640. A copy that fails leaves nothing.
    std::optional<NSError> copyItemAtURL(const URL& source, const URL& target) const;

    Result<Dictionary> attributesOfItemAtPath(const std::string& path) const;

private:
    NSFileManager() = default;
};

} // namespace anadrome
