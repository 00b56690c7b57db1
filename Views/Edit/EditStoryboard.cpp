#include "Views/Edit/EditStoryboard.h"

#include "Views/Edit/EditViewController.h"

namespace anadrome {

namespace {

/// Between the Create button and the foot of the screen until there is a banner, in points.
constexpr CGFloat createButtonDistance = 16;

/// From 0 to 1, with the speed 1.0 in the middle.
void prepareSpeed(UISlider& slider, UILabel& value) {
    slider.setMinimumValue(0);
    slider.setMaximumValue(1);
    slider.setValue(0.5F);
    value.setText("1.0x");
}

void setFirstValues(const EditViews& views) {
    views.videoSeekBar->setMinimumValue(0);
    prepareSpeed(*views.reverseSpeedSlider, *views.reverseSpeedValueLabel);
    prepareSpeed(*views.normalSpeedSlider, *views.normalSpeedValueLabel);
    views.outputTypeSegmentedControl->setTitles({"", "", ""});
    views.fileTypeSegmentedControl->setTitles({"MOV", "MP4"});
    for (const auto& control : {views.outputTypeSegmentedControl, views.fileTypeSegmentedControl})
        control->setSelectedSegmentIndex(0);
    views.createButtonBottomConstraint->setConstant(createButtonDistance);
    views.createButtonBottomConstraint->setActive(true);
}

} // namespace

void buildEditViews(EditViewController& edit, UIView& root) {
    using Edit = EditViewController;
    constexpr auto changed = UIControlEvents::valueChanged;
    constexpr auto touchUp = UIControlEvents::touchUpInside | UIControlEvents::touchUpOutside;
    const EditViews& views = edit.m_views.emplace(root);
    setFirstValues(views);
    views.videoSeekBar->addTarget(edit, &Edit::seekBarChanged, changed);
    views.outputTypeSegmentedControl->addTarget(edit, &Edit::outputTypeChanged, changed);
    views.reverseSpeedSlider->addTarget(edit, &Edit::reverseSpeedChanged, changed);
    views.normalSpeedSlider->addTarget(edit, &Edit::normalSpeedChanged, changed);
    for (const auto& slider : {views.reverseSpeedSlider, views.normalSpeedSlider})
        slider->addTarget(edit, &Edit::speedSliderTouchUp, touchUp);
    views.fileTypeSegmentedControl->addTarget(edit, &Edit::fileTypeChanged, changed);
    views.exifSwitch->addTarget(edit, &Edit::exifChanged, changed);
    views.createButton->addTarget(edit, &Edit::createTap, UIControlEvents::touchUpInside);
}

UIStoryboardScene editStoryboard() {
    return UIStoryboardScene::ofController(buildEditViews);
}

} // namespace anadrome
