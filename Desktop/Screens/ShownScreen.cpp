#include "Desktop/Screens/ShownScreen.h"

#include "Desktop/Items/ViewItems.h"

namespace anadrome::desktop {

namespace {

std::shared_ptr<UIView> findView(const std::shared_ptr<UIView>& root, const std::string& name) {
    if (root->accessibilityIdentifier() == name)
        return root;
    for (const auto& view : root->subviews())
        if (auto found = findView(view, name))
            return found;
    return nullptr;
}

} // namespace

ViewItem* ShownScreen::view(const QString& name) {
    if (const auto known = m_items.find(name); known != m_items.end())
        return known->second;
    const auto controller = m_controller.lock();
    const auto view = controller ? findView(controller->view(), name.toStdString()) : nullptr;
    return view ? m_items[name] = makeViewItem(view, this) : nullptr;
}

void ShownScreen::close() {
    if (const auto controller = m_controller.lock())
        controller->dismissViewControllerAnimated(true);
}

void ShownScreen::noteChange(const UIView& view, double seconds) {
    for (const auto& [name, item] : m_items)
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
