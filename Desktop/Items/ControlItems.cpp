#include "Desktop/Items/ControlItems.h"

namespace anadrome::desktop {

bool ControlItem::isEnabled() const {
    return ask<UIControl>([](UIControl& control) { return control.isEnabled(); });
}

double SliderItem::from() const {
    return ask<UISlider>([](UISlider& slider) { return slider.minimumValue(); });
}

double SliderItem::to() const {
    return ask<UISlider>([](UISlider& slider) { return slider.maximumValue(); });
}

double SliderItem::value() const {
    return ask<UISlider>([](UISlider& slider) { return slider.value(); });
}

bool SliderItem::isTracking() const {
    return ask<UISlider>([](UISlider& slider) { return slider.isTracking(); });
}

// Views tell of what changes their looks; that the hand holds a slider does so here alone.

void SliderItem::press() {
    act<UISlider>([](UISlider& slider) { slider.beginTracking(); });
    Q_EMIT changed();
}

void SliderItem::moveTo(double value) {
    act<UISlider>([value](UISlider& slider) { slider.trackTo(static_cast<float>(value)); });
}

void SliderItem::release() {
    act<UISlider>([](UISlider& slider) { slider.endTracking(); });
    Q_EMIT changed();
}

void SliderItem::cancel() {
    act<UISlider>([](UISlider& slider) { slider.cancelTracking(); });
    Q_EMIT changed();
}

void SliderItem::put(double value) {
    press();
    moveTo(value);
    release();
}

QStringList SegmentsItem::titles() const {
    return ask<UISegmentedControl>([](UISegmentedControl& control) {
        QStringList titles;
        for (long index = 0; index < control.numberOfSegments(); ++index)
            titles.append(QString::fromStdString(control.titleForSegmentAtIndex(index)));
        return titles;
    });
}

int SegmentsItem::selected() const {
    return ask<UISegmentedControl>(
        [](UISegmentedControl& control) { return static_cast<int>(control.selectedSegmentIndex()); });
}

void SegmentsItem::tap(int index) {
    act<UISegmentedControl>([index](UISegmentedControl& control) { control.tapSegment(index); });
}

bool SwitchItem::isOn() const {
    return ask<UISwitch>([](UISwitch& view) { return view.isOn(); });
}

void SwitchItem::tap() {
    act<UISwitch>([](UISwitch& view) { view.tap(); });
}

} // namespace anadrome::desktop
