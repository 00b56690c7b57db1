#include "Platform/UIKit/UIDocumentPickerViewController.h"

namespace anadrome {

void UIDocumentPickerViewController::finish(const std::vector<URL>& files) {
    const auto presenter = presentingViewController();
    if (!presenter)
        return;
    const auto self = shared_from_this();
    presenter->dismissViewControllerAnimated(true);
    if (const auto delegate = m_delegate.lock(); delegate && !files.empty())
        delegate->didPickDocumentsAtURLs(*this, files);
}

} // namespace anadrome
