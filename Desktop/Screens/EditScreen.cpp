#include "Desktop/Screens/EditScreen.h"

#include "Platform/Foundation/NSFileManager.h"
#include "Views/Edit/EditViewController.h"

namespace anadrome::desktop {

namespace {

/// The camera's clips lie there, under numbers.
bool isTemporary(const URL& file) {
    return file.path().starts_with(NSFileManager::defaultManager().temporaryDirectory().path());
}

} // namespace

QString EditScreen::clipName() const {
    const auto edit = controllerAs<EditViewController>();
    if (!edit || !edit->inputUrl() || isTemporary(*edit->inputUrl()))
        return {};
    return QString::fromStdString(edit->inputUrl()->lastPathComponent());
}

} // namespace anadrome::desktop
