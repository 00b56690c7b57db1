#include "Views/Edit/EditStoryboard.h"

#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UIImageView.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UISwitch.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Edit/PlayerView.h"

namespace anadrome {

namespace {

constexpr auto touchUp = UIControlEvents::touchUpInside | UIControlEvents::touchUpOutside;

/// Of the Create button from the foot of the screen, in points, until there is a banner.
constexpr CGFloat createButtonDistance = 16;

/// From 0 to 1, with the speed 1.0 in the middle.
void prepareSpeedSlider(UISlider& slider) {
    slider.setMinimumValue(0);
    slider.setMaximumValue(1);
    slider.setValue(0.5F);
}

void prepareSpeedValueLabel(UILabel& label) {
    label.setText("1.0x");
}

void prepareOutputTypes(UISegmentedControl& control) {
    control.setTitles({"", "", ""});
    control.setSelectedSegmentIndex(0);
}

void prepareFileTypes(UISegmentedControl& control) {
    control.setTitles({"MOV", "MP4"});
    control.setSelectedSegmentIndex(0);
}

} // namespace

UIStoryboardScene editStoryboard() {
    UIStoryboardScene scene = UIStoryboardScene::ofController<EditViewController>();
    scene.add<PlayerView>("playerView")
        .add<UIImageView>("playPauseButtonImageView")
        .add<UISlider>("videoSeekBar", [](UISlider& bar) { bar.setMinimumValue(0); },
                       {{UIControlEvents::valueChanged, "seekBarChanged"}});
    scene.add<UILabel>("outputTypeLabel")
        .add<UISegmentedControl>("outputTypeSegmentedControl", prepareOutputTypes,
                                 {{UIControlEvents::valueChanged, "outputTypeChanged"}})
        .add<UILabel>("outputTypeValueLabel")
        .add<UILabel>("outputTypeNoticeLabel");
    scene.add<UILabel>("reverseSpeedLabel")
        .add<UILabel>("reverseSpeedValueLabel", prepareSpeedValueLabel)
        .add<UISlider>(
            "reverseSpeedSlider", prepareSpeedSlider,
            {{UIControlEvents::valueChanged, "reverseSpeedChanged"}, {touchUp, "speedSliderTouchUp"}});
    scene.add<UILabel>("normalSpeedLabel")
        .add<UILabel>("normalSpeedValueLabel", prepareSpeedValueLabel)
        .add<UISlider>(
            "normalSpeedSlider", prepareSpeedSlider,
            {{UIControlEvents::valueChanged, "normalSpeedChanged"}, {touchUp, "speedSliderTouchUp"}});
    scene
        .add<UISegmentedControl>("fileTypeSegmentedControl", prepareFileTypes,
                                 {{UIControlEvents::valueChanged, "fileTypeChanged"}})
        .add<UILabel>("exifLabel")
        .add<UISwitch>("exifSwitch", {}, {{UIControlEvents::valueChanged, "exifChanged"}})
        .add<UIButton>("createButton", {}, {{UIControlEvents::touchUpInside, "createTap"}})
        .addConstraint("createButtonBottomConstraint", {"", NSLayoutAttribute::bottom},
                       {"createButton", NSLayoutAttribute::bottom}, createButtonDistance);
    return scene;
}

} // namespace anadrome
