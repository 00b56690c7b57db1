#include "Desktop/Screens/FilesScreen.h"

#include "Desktop/System/FileAddress.h"
#include "Desktop/Texts.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome::desktop {

void FilesScreen::accept(const QList<QUrl>& files) {
    const auto picker = controllerAs<UIDocumentPickerViewController>();
    if (!picker)
        return;
    std::vector<URL> urls;
    for (const QUrl& file : files)
        if (auto url = fileAt(file))
            urls.push_back(std::move(*url));
    const auto below = picker->presentingViewController();
    picker->finish(urls);
    if (below && urls.size() < static_cast<std::size_t>(files.size()))
        ViewHelper::errorAlert(Texts::of("ClipIsElsewhere").toStdString(), *below);
}

} // namespace anadrome::desktop
