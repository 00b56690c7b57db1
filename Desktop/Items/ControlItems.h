#pragma once

#include "Desktop/Items/ViewItem.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UISwitch.h"

#include <QStringList>

namespace anadrome::desktop {

/// A control that the user may be kept from.
class ControlItem : public anadrome::desktop::ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")

public:
    ControlItem(const std::shared_ptr<UIControl>& view, QObject* parent) : ViewItem(view, parent) {}

    bool isEnabled() const override;
};

/// Chooses a number.
class SliderItem : public anadrome::desktop::ControlItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(double from READ from NOTIFY changed)
    Q_PROPERTY(double to READ to NOTIFY changed)
    Q_PROPERTY(double value READ value NOTIFY changed)
    Q_PROPERTY(bool tracking READ isTracking NOTIFY changed)

public:
    SliderItem(const std::shared_ptr<UISlider>& view, QObject* parent) : ControlItem(view, parent) {}

    double from() const;
    double to() const;
    double value() const;
    bool isTracking() const;

    /// The hand takes the thumb, moves it, lets go, or loses it. Taking it twice is taking it once.
    Q_INVOKABLE void press();
    Q_INVOKABLE void moveTo(double value);
    Q_INVOKABLE void release();
    Q_INVOKABLE void cancel();
    /// All of it at once, to that value.
    Q_INVOKABLE void put(double value);
};

/// Chooses one of a few.
class SegmentsItem : public anadrome::desktop::ControlItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(QStringList titles READ titles NOTIFY changed)
    /// Its index, -1 for none.
    Q_PROPERTY(int selected READ selected NOTIFY changed)

public:
    SegmentsItem(const std::shared_ptr<UISegmentedControl>& view, QObject* parent)
        : ControlItem(view, parent) {}

    QStringList titles() const;
    int selected() const;
    Q_INVOKABLE void tap(int index);
};

class SwitchItem : public anadrome::desktop::ControlItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(bool on READ isOn NOTIFY changed)

public:
    SwitchItem(const std::shared_ptr<UISwitch>& view, QObject* parent) : ControlItem(view, parent) {}

    bool isOn() const;
    Q_INVOKABLE void tap();
};

} // namespace anadrome::desktop
