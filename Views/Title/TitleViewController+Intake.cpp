// The ways in which a clip comes: recorded, picked from the user's movies, picked as a file, brought to the
// program.

#include "Models/VideoFileManager.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/NSProcessInfo.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Platform/UniformTypeIdentifiers/UTType.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Title/TitleViewController.h"

namespace anadrome {

void TitleViewController::cameraTap() {
    FIRAnalytics::logEventWithName("title_camera");
    const auto picker = std::make_shared<UIImagePickerController>();
    picker->setDelegate(weakSelf());
    picker->setMediaTypes({kUTTypeMovie});
    picker->setSourceType(UIImagePickerControllerSourceType::camera);
    picker->setAllowsEditing(false);
    picker->setVideoQuality(UIImagePickerControllerQualityType::high);
    presentViewController(picker, true);
}

void TitleViewController::didFinishPickingMediaWithInfo(UIImagePickerController& picker, const Info& info) {
    const auto movie = info.find(UIImagePickerControllerMediaURL);
    if (movie == info.end()) {
        // Over the picker, which stays.
        ViewHelper::showError(picker.shared_from_this(), NSLocalizedString("FailedToAccessAvasset"));
        return;
    }
    const Result<URL> copy = copyToWorkFolder(movie->second);
    if (!copy) {
        // Over the picker again: the recording is nowhere else, and the user may make room for it.
        ViewHelper::showError(picker.shared_from_this(), copy.error().localizedDescription());
        return;
    }
    picker.dismissViewControllerAnimated(true);
    openEditScreen(*copy);
}

void TitleViewController::imagePickerControllerDidCancel(UIImagePickerController& picker) {
    picker.dismissViewControllerAnimated(true);
}

void TitleViewController::libraryTap() {
    FIRAnalytics::logEventWithName("title_library");
    PHPickerConfiguration configuration;
    configuration.filter = PHPickerFilter::videos;
    configuration.selectionLimit = 1;
    // The movie as it is: any conversion would cost time and quality.
    configuration.preferredAssetRepresentationMode = PHPickerConfigurationAssetRepresentationMode::current;
    const auto picker = std::make_shared<PHPickerViewController>(configuration);
    picker->setDelegate(weakSelf());
    presentViewController(picker, true);
}

void TitleViewController::didFinishPicking(PHPickerViewController& picker,
                                           const std::vector<PHPickerResult>& results) {
    picker.dismissViewControllerAnimated(true);
    if (results.empty() || !results.front().itemProvider.hasItemConformingToTypeIdentifier(kUTTypeMovie))
        return;
    results.front().itemProvider.loadFileRepresentationForTypeIdentifier(
        kUTTypeMovie, [weak = weakSelf()](const auto& movie, const auto& error) {
            if (const auto self = weak.lock())
                self->takePickedMovie(movie, error);
        });
}

/// On the provider's queue: the movie may go as soon as this returns, so it is copied here.
void TitleViewController::takePickedMovie(const std::optional<URL>& movie,
                                          const std::optional<NSError>& error) {
    if (error)
        ViewHelper::showError(self(), error->localizedDescription());
    if (!movie)
        return;
    const Result<URL> copy = copyToWorkFolder(*movie);
    if (!copy)
        return ViewHelper::showError(self(), copy.error().localizedDescription());
    DispatchQueue::main().async([weak = weakSelf(), copy = *copy] {
        if (const auto self = weak.lock())
            self->openEditScreen(copy);
    });
}

void TitleViewController::iCloudTap() {
    FIRAnalytics::logEventWithName("title_iCloud");
    const auto picker = std::make_shared<UIDocumentPickerViewController>(
        std::vector<std::string>{kUTTypeMovie}, UIDocumentPickerMode::import);
    picker->setDelegate(weakSelf());
    if (const auto stack = navigationController())
        stack->presentViewController(picker, true);
}

void TitleViewController::didPickDocumentsAtURLs(UIDocumentPickerViewController&,
                                                 const std::vector<URL>& urls) {
    if (!urls.empty())
        openClip(urls.front());
}

void TitleViewController::openClip(const URL& clip) {
    if (const auto stack = navigationController())
        stack->popToRootViewControllerAnimated(false);
    openEditScreen(clip);
}

Result<URL> TitleViewController::copyToWorkFolder(const URL& source) {
    const URL copy = VideoFileManager::videosDirectory().appendingPathComponent(
        NSProcessInfo::processInfo().globallyUniqueString() + "." + source.pathExtension());
    if (const auto error = NSFileManager::defaultManager().copyItemAtURL(source, copy)) {
        // The error's own sentence may name the work file, which means nothing to the user.
        const NSError& cause = error->underlying() ? *error->underlying() : *error;
        return NSError(error->domain(), error->code(),
                       NSLocalizedString("The clip couldn’t be copied: %1.", {cause.localizedDescription()}),
                       cause);
    }
    return copy;
}

void TitleViewController::openEditScreen(const URL& url) {
    const auto edit = std::dynamic_pointer_cast<EditViewController>(
        UIStoryboard::storyboardWithName("Edit").instantiateInitialViewController());
    if (!edit)
        fatalError("The storyboard Edit doesn't begin with the Edit screen");
    edit->setInputUrl(url);
    showViewController(edit);
}

} // namespace anadrome
