#include "Desktop/Screens/ShownScreen.h"

namespace anadrome::desktop {

void ShownScreen::close() {
    if (const auto controller = m_controller.lock())
        controller->dismissViewControllerAnimated(true);
}

void ShownScreen::noteChange(const UIView& view, double seconds) {
    for (ViewItem* item : m_items)
        if (item->isOf(view))
            return item->noteChange(seconds);
    if (const auto around = view.superview())
        noteChange(*around, seconds);
}

void ShownScreen::setSize(double width, double height) const {
    if (const auto controller = m_controller.lock())
        controller->view()->setFrame({{0, 0}, {width, height}});
}

} // namespace anadrome::desktop
