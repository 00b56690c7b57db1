#include "Desktop/Library/LibraryScreen.h"

#include "Platform/PhotosUI/PHPickerViewController.h"

namespace anadrome::desktop {

void LibraryScreen::close() {
    if (const auto picker = controllerAs<PHPickerViewController>())
        picker->finish({});
}

} // namespace anadrome::desktop
