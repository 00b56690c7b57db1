#include "Platform/UIKit/UIImagePickerController.h"

namespace anadrome {

void UIImagePickerController::finishPicking(const std::optional<URL>& movie) {
    UIImagePickerControllerDelegate::Info info;
    if (movie)
        info[UIImagePickerControllerMediaURL] = *movie;
    if (const auto delegate = delegateIfPresented())
        delegate->didFinishPickingMediaWithInfo(*this, info);
}

void UIImagePickerController::cancel() {
    if (const auto delegate = delegateIfPresented())
        delegate->imagePickerControllerDidCancel(*this);
}

} // namespace anadrome
