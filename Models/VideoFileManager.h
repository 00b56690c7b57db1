#pragma once

#include "Platform/AVFoundation/AVMediaFormat.h"
#include "Platform/Foundation/URL.h"

#include <optional>
#include <string>

namespace anadrome {

class NSError;

/// The place of all intermediate movie files: the folder "Videos" of the temporary directory. Nothing removes
/// a single file after use; they go all together. Stateless; any thread.
class VideoFileManager {
public:
    /// Made if missing, also when it went away in between.
    static URL videosDirectory();

    /// A name in the work folder that no file has, with the container's extension.
    static URL newWorkUrl(AVFileType fileType);

    /// Sweeps the work folder and then the whole temporary directory, whoever put things there. Ends silently
    /// at the first thing that can't be removed. Not while a job runs.
    static void removeAllWorkFiles();

private:
    static std::optional<NSError> removeItem(const std::string& name, const URL& folder);
    static std::optional<NSError> removeContents(const URL& folder);
};

} // namespace anadrome
