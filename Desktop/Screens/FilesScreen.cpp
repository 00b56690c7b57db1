#include "Desktop/Screens/FilesScreen.h"

#include "Platform/UIKit/UIDocumentPickerViewController.h"

namespace anadrome::desktop {

void FilesScreen::accept(const QList<QUrl>& files) {
    std::vector<URL> urls;
    for (const QUrl& file : files)
        if (file.isLocalFile())
            urls.push_back(URL::fileURLWithPath(file.toLocalFile().toStdString()));
    if (const auto picker = controllerAs<UIDocumentPickerViewController>())
        picker->finish(urls);
}

} // namespace anadrome::desktop
