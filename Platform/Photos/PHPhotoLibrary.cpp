#include "Platform/Photos/PHPhotoLibrary.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Foundation/UserFolders.h"
#include "Platform/Photos/ChangeBlock.h"
#include "Platform/Photos/SaveVideo.h"

#include <utility>

namespace anadrome {

namespace {

URL libraryFolder() {
    return URL::fileURLWithPath(userVideosFolder()).appendingPathComponent("Anadrome");
}

std::optional<NSError> make(const std::vector<URL>& newVideos) {
    for (const URL& video : newVideos)
        if (auto error = saveVideo(video, libraryFolder()))
            return error;
    return std::nullopt;
}

} // namespace

PHPhotoLibrary& PHPhotoLibrary::sharedPhotoLibrary() {
    static PHPhotoLibrary instance;
    return instance;
}

void PHPhotoLibrary::performChanges(std::function<void()> changes,
                                    CompletionHandler completionHandler) const {
    static const DispatchQueue queue = DispatchQueue::serial("photos");
    if (ChangeBlock::current())
        fatalError("PHPhotoLibrary: changes inside of changes");
    queue.async([changes = std::move(changes), completionHandler = std::move(completionHandler)] {
        const auto error = make(ChangeBlock::collect(changes));
        completionHandler(!error, error);
    });
}

} // namespace anadrome
