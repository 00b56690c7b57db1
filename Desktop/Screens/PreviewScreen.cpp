#include "Desktop/Screens/PreviewScreen.h"

#include "Desktop/Items/ControlItems.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"

namespace anadrome::desktop {

namespace {

/// The Edit screen that made the movie; null if there is none.
std::shared_ptr<EditViewController> makerOf(const UIViewController& preview) {
    const auto stack = preview.navigationController();
    if (stack)
        for (const auto& screen : stack->viewControllers())
            if (auto edit = std::dynamic_pointer_cast<EditViewController>(screen))
                return edit;
    return nullptr;
}

QVariantMap stretch(double end, bool isBackward) {
    return {{"end", end}, {"backward", isBackward}};
}

/// Read off the controls, which are out of reach from the start of the job until the movie is shown.
QVariantList stretchesOf(const std::shared_ptr<EditViewController>& edit) {
    if (!edit)
        return {};
    ShownScreen screen(edit, "Edit", nullptr);
    const auto* outputType = qobject_cast<SegmentsItem*>(screen.view("outputTypeSegmentedControl"));
    const double backward = 1 / edit->reverseSpeed();
    const double forward = 1 / edit->normalSpeed();
    switch (outputType->selected()) {
    case 1:
        return {stretch(backward / (backward + forward), true), stretch(1, false)};
    case 2:
        return {stretch(forward / (backward + forward), false), stretch(1, true)};
    default:
        return {stretch(1, true)};
    }
}

} // namespace

PreviewScreen::PreviewScreen(const std::shared_ptr<UIViewController>& controller, QString kind,
                             QObject* parent)
    : ShownScreen(controller, std::move(kind), parent),
      m_player(new MoviePlayer(controllerAs<PreviewViewController>()->playerBefore(), this)),
      m_stretches(stretchesOf(makerOf(*controller))) {}

} // namespace anadrome::desktop
