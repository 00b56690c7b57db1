#include "Models/WorkFolder.h"

#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

URL workFolder(const std::string& name) {
    const NSFileManager& files = NSFileManager::defaultManager();
    const URL url = files.temporaryDirectory().appendingPathComponent(name);
    // The URL's textual form is no file path, so this is normally false; making a folder that exists does no
    // harm.
    bool isDirectory = true;
    if (files.fileExistsAtPath(url.absoluteString(), &isDirectory) && isDirectory)
        return url;
    if (const std::optional<NSError> error = files.createDirectoryAtPath(url.path(), true))
        print(error->description());
    return url;
}

} // namespace anadrome
