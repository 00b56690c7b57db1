#include "Desktop/PreviewScreen.h"

#include "Views/Preview/PreviewViewController.h"

namespace anadrome::desktop {

PreviewScreen::PreviewScreen(const std::shared_ptr<UIViewController>& controller, QString kind,
                             QObject* parent)
    : ShownScreen(controller, std::move(kind), parent),
      m_player(new MoviePlayer(controllerAs<PreviewViewController>()->playerBefore(), this)) {}

} // namespace anadrome::desktop
