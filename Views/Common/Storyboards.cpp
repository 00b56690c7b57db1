#include "Views/Common/Storyboards.h"

#include "Platform/UIKit/UIStoryboard.h"
#include "Views/Edit/EditStoryboard.h"
#include "Views/Preview/PreviewStoryboard.h"

namespace anadrome {

void registerStoryboards() {
    UIStoryboard::registerStoryboard("Edit", editStoryboard());
    UIStoryboard::registerStoryboard("Preview", previewStoryboard());
}

} // namespace anadrome
