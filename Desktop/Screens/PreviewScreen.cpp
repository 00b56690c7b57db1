#include "Desktop/Screens/PreviewScreen.h"

#include "Platform/AVKit/AVPlayerViewController.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Views/Edit/EditViewController.h"

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
    const double backward = 1 / edit->reverseSpeed();
    const double forward = 1 / edit->normalSpeed();
    switch (edit->views().outputTypeSegmentedControl->selectedSegmentIndex()) {
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
      moviePlayer(add<PlayerItem>(controllerAs<PreviewViewController>()->playerController()->layerView())),
      m_player(new MoviePlayer(controllerAs<PreviewViewController>()->playerBefore(), this)),
      m_stretches(stretchesOf(makerOf(*controller))) {}

} // namespace anadrome::desktop
