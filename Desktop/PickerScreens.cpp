#include "Desktop/PickerScreens.h"

#include "Platform/PhotosUI/PHPickerViewController.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Platform/UIKit/UIImagePickerController.h"

namespace anadrome::desktop {

void FilesScreen::accept(const QList<QUrl>& files) {
    std::vector<URL> urls;
    for (const QUrl& file : files)
        if (file.isLocalFile())
            urls.push_back(URL::fileURLWithPath(file.toLocalFile().toStdString()));
    if (const auto picker = controllerAs<UIDocumentPickerViewController>())
        picker->finish(urls);
}

void LibraryScreen::close() {
    if (const auto picker = controllerAs<PHPickerViewController>())
        picker->finish({});
}

void CameraScreen::close() {
    if (const auto picker = controllerAs<UIImagePickerController>())
        picker->cancel();
}

} // namespace anadrome::desktop
