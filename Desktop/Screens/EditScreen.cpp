#include "Desktop/Screens/EditScreen.h"

#include "Desktop/System/FileAddress.h"
#include "Views/Edit/EditViewController.h"

namespace anadrome::desktop {

QString EditScreen::clipName() const {
    const auto edit = controllerAs<EditViewController>();
    // The camera's clips have numbers for names.
    if (!edit || !edit->inputUrl() || isTemporary(*edit->inputUrl()))
        return {};
    return QString::fromStdString(edit->inputUrl()->lastPathComponent());
}

} // namespace anadrome::desktop
