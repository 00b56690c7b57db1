#include "Views/Common/Storyboards.h"

#include "Platform/UIKit/UIStoryboard.h"
#include "Views/Edit/EditStoryboard.h"
#include "Views/Preview/PreviewStoryboard.h"
#include "Views/Settings/SettingsStoryboard.h"
#include "Views/Title/TitleStoryboard.h"

namespace anadrome {

void registerStoryboards() {
    UIStoryboard::registerStoryboard("Main", titleStoryboard());
    UIStoryboard::registerStoryboard("Edit", editStoryboard());
    UIStoryboard::registerStoryboard("Preview", previewStoryboard());
    UIStoryboard::registerStoryboard("Settings", settingsStoryboard());
}

} // namespace anadrome
