#include "Views/Title/TitleStoryboard.h"

#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Views/Common/UIView+Border.h"
#include "Views/Title/TitleViewController.h"

#include <algorithm>

namespace anadrome {

namespace {

constexpr auto tap = UIControlEvents::touchUpInside;
void prepareCard(UIButton& button) {
    setCornerRadius(button, 14);
    setBorderWidth(button, 1);
    setBorderColor(button, UIColor::separatorColor());
}

void addIntakes(UIStoryboardScene& scene) {
    scene.add<UIButton>("cameraButton", prepareCard, {{tap, "cameraTap"}})
        .add<UILabel>("cameraNotice")
        .add<UIButton>("libraryButton", prepareCard, {{tap, "libraryTap"}})
        .add<UIButton>("iCloudButton", prepareCard, {{tap, "iCloudTap"}});
}

void addQuality(UIStoryboardScene& scene) {
    scene.add<UILabel>("videoQualityLabel")
        .add<UISegmentedControl>("videoQualitySegmentedControl",
                                 [](UISegmentedControl& control) {
                                     control.setTitles({"", "", ""});
                                 },
                                 {{UIControlEvents::valueChanged, "videoQualityChanged"}});
}

bool hasPage(const std::string& identifier) {
    return !Deployment::current().productPage(identifier).empty();
}

/// Only apps with a deployed store page are shown; the heading hides with the last of them.
void addAppStrip(UIStoryboardScene& scene) {
    scene.add<UILabel>("moreAppsLabel", [](UILabel& label) {
        label.setHidden(std::ranges::none_of(Deployment::current().appStripIdentifiers, hasPage));
    });
    for (std::size_t index = 0; index < Deployment().appStripIdentifiers.size(); ++index) {
        const std::string app = "app" + std::to_string(index + 1);
        const auto hideWithoutPage = [index](UIView& view) {
            view.setHidden(!hasPage(Deployment::current().appStripIdentifiers[index]));
        };
        const auto prepare = [index, hideWithoutPage](UIButton& button) {
            button.setTag(static_cast<long>(index));
            hideWithoutPage(button);
        };
        scene.add<UILabel>(app + "Label", hideWithoutPage)
            .add<UIButton>(app + "Button", prepare, {{tap, "appButtonTapped"}});
    }
}

} // namespace

UIStoryboardScene titleStoryboard() {
    UIStoryboardScene scene = UIStoryboardScene::ofController<TitleViewController>();
    scene.add<UIButton>("infoButton", {}, {{tap, "infoButtonTapped"}});
    addIntakes(scene);
    addQuality(scene);
    addAppStrip(scene);
    scene.add<UIButton>("shareAppButton", {}, {{tap, "shareAppTapped"}});
    return scene.inNavigationController();
}

} // namespace anadrome
