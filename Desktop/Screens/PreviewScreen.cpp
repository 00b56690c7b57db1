#include "Desktop/Screens/PreviewScreen.h"

#include "Platform/AVKit/AVPlayerViewController.h"
#include "Platform/Foundation/Print.h"
#include "Views/Preview/PreviewViewController.h"

namespace anadrome::desktop {

namespace {

QVariantMap stretch(double end, bool isBackward) {
    return {{"end", end}, {"backward", isBackward}};
}

QVariantList stretchesOf(const std::optional<MovieRecipe>& recipe) {
    if (!recipe)
        return {};
    const double backward = 1 / recipe->reverseSpeed();
    const double forward = 1 / recipe->normalSpeed();
    switch (recipe->outputType()) {
    case OutputType::reversed:
        return {stretch(1, true)};
    case OutputType::reversedThenForward:
        return {stretch(backward / (backward + forward), true), stretch(1, false)};
    case OutputType::forwardThenReversed:
        return {stretch(forward / (backward + forward), false), stretch(1, true)};
    }
    fatalError("There is no such output type");
}

} // namespace

PreviewScreen::PreviewScreen(const std::shared_ptr<UIViewController>& controller, QString kind,
                             QObject* parent)
    : ShownScreen(controller, std::move(kind), parent),
      moviePlayer(add<PlayerItem>(controllerAs<PreviewViewController>()->playerController()->layerView())),
      m_player(new MoviePlayer(controllerAs<PreviewViewController>()->playerBefore(), this)),
      m_stretches(stretchesOf(controllerAs<PreviewViewController>()->recipe())) {}

} // namespace anadrome::desktop
