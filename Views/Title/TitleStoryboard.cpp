#include "Views/Title/TitleStoryboard.h"

#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Views/Common/UIView+Border.h"
#include "Views/Title/TitleViewController.h"

namespace anadrome {

namespace {

constexpr auto tap = UIControlEvents::touchUpInside;
constexpr long appsInStrip = 5;

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

void addAppStrip(UIStoryboardScene& scene) {
    scene.add<UILabel>("moreAppsLabel");
    for (long tag = 0; tag < appsInStrip; ++tag) {
        const std::string app = "app" + std::to_string(tag + 1);
        scene.add<UILabel>(app + "Label")
            .add<UIButton>(app + "Button", [tag](UIButton& button) { button.setTag(tag); },
                           {{tap, "appButtonTapped"}});
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
