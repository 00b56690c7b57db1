#include "Desktop/Camera/CameraScreen.h"

#include "Platform/UIKit/UIImagePickerController.h"

namespace anadrome::desktop {

void CameraScreen::close() {
    if (const auto picker = controllerAs<UIImagePickerController>())
        picker->cancel();
}

} // namespace anadrome::desktop
