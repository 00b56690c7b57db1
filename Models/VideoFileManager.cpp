#include "Models/VideoFileManager.h"

#include "Models/MovieRecipe.h"
#include "Models/WorkFolder.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

URL VideoFileManager::videosDirectory() {
    return workFolder("Videos");
}

URL VideoFileManager::newWorkUrl(AVFileType fileType) {
    return videosDirectory().appendingPathComponent(NSProcessInfo::processInfo().globallyUniqueString() +
                                                    fileExtension(fileType));
}

void VideoFileManager::removeAllWorkFiles() {
    std::optional<NSError> error = removeContents(videosDirectory());
    if (!error)
        error = removeContents(NSFileManager::defaultManager().temporaryDirectory());
    if (error)
        debugLog(error->description());
}

std::optional<NSError> VideoFileManager::removeContents(const URL& folder) {
    const Result<std::vector<std::string>> names =
        NSFileManager::defaultManager().contentsOfDirectoryAtPath(folder.path());
    if (!names)
        return names.error();
    for (const std::string& name : *names)
        if (std::optional<NSError> error = removeItem(name, folder))
            return error;
    return std::nullopt;
}

std::optional<NSError> VideoFileManager::removeItem(const std::string& name, const URL& folder) {
    const URL fileUrl = folder.appendingPathComponent(name);
    debugLog("fileUrl = " + fileUrl.absoluteString());
    return NSFileManager::defaultManager().removeItemAtPath(fileUrl.path());
}

} // namespace anadrome
