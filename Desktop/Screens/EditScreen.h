#pragma once

#include "Desktop/Items/BannerItem.h"
#include "Desktop/Items/ControlItems.h"
#include "Desktop/Items/PlayerItem.h"
#include "Desktop/Items/TextItems.h"
#include "Desktop/Screens/ShownScreen.h"
#include "Views/Edit/EditViewController.h"

namespace anadrome::desktop {

/// The open clip.
class EditScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    /// The file's; empty for a clip whose file the user hasn't named.
    Q_PROPERTY(QString clipName READ clipName CONSTANT)
    /// From the foot of the Create button to that of the screen, in points.
    Q_PROPERTY(double createButtonDistance MEMBER createButtonDistance CONSTANT)
    Q_PROPERTY(anadrome::desktop::PlayerItem* playerView MEMBER playerView CONSTANT)
    Q_PROPERTY(
        anadrome::desktop::ImageItem* playPauseButtonImageView MEMBER playPauseButtonImageView CONSTANT)
    Q_PROPERTY(anadrome::desktop::SliderItem* videoSeekBar MEMBER videoSeekBar CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* outputTypeLabel MEMBER outputTypeLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::SegmentsItem* outputTypeSegmentedControl MEMBER outputTypeSegmentedControl
                   CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* outputTypeValueLabel MEMBER outputTypeValueLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* outputTypeNoticeLabel MEMBER outputTypeNoticeLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* reverseSpeedLabel MEMBER reverseSpeedLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* reverseSpeedValueLabel MEMBER reverseSpeedValueLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::SliderItem* reverseSpeedSlider MEMBER reverseSpeedSlider CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* normalSpeedLabel MEMBER normalSpeedLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* normalSpeedValueLabel MEMBER normalSpeedValueLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::SliderItem* normalSpeedSlider MEMBER normalSpeedSlider CONSTANT)
    Q_PROPERTY(
        anadrome::desktop::SegmentsItem* fileTypeSegmentedControl MEMBER fileTypeSegmentedControl CONSTANT)
    Q_PROPERTY(anadrome::desktop::LabelItem* exifLabel MEMBER exifLabel CONSTANT)
    Q_PROPERTY(anadrome::desktop::SwitchItem* exifSwitch MEMBER exifSwitch CONSTANT)
    Q_PROPERTY(anadrome::desktop::ButtonItem* createButton MEMBER createButton CONSTANT)
    Q_PROPERTY(anadrome::desktop::BannerItem* bannerView MEMBER bannerView CONSTANT)

public:
    using ShownScreen::ShownScreen;

    QString clipName() const;

private:
    const EditViews& views() const { return controllerAs<EditViewController>()->views(); }

public:
    PlayerItem* const playerView = add<PlayerItem>(views().playerView);
    ImageItem* const playPauseButtonImageView = add<ImageItem>(views().playPauseButtonImageView);
    SliderItem* const videoSeekBar = add<SliderItem>(views().videoSeekBar);
    LabelItem* const outputTypeLabel = add<LabelItem>(views().outputTypeLabel);
    SegmentsItem* const outputTypeSegmentedControl = add<SegmentsItem>(views().outputTypeSegmentedControl);
    LabelItem* const outputTypeValueLabel = add<LabelItem>(views().outputTypeValueLabel);
    LabelItem* const outputTypeNoticeLabel = add<LabelItem>(views().outputTypeNoticeLabel);
    LabelItem* const reverseSpeedLabel = add<LabelItem>(views().reverseSpeedLabel);
    LabelItem* const reverseSpeedValueLabel = add<LabelItem>(views().reverseSpeedValueLabel);
    SliderItem* const reverseSpeedSlider = add<SliderItem>(views().reverseSpeedSlider);
    LabelItem* const normalSpeedLabel = add<LabelItem>(views().normalSpeedLabel);
    LabelItem* const normalSpeedValueLabel = add<LabelItem>(views().normalSpeedValueLabel);
    SliderItem* const normalSpeedSlider = add<SliderItem>(views().normalSpeedSlider);
    SegmentsItem* const fileTypeSegmentedControl = add<SegmentsItem>(views().fileTypeSegmentedControl);
    LabelItem* const exifLabel = add<LabelItem>(views().exifLabel);
    SwitchItem* const exifSwitch = add<SwitchItem>(views().exifSwitch);
    ButtonItem* const createButton = add<ButtonItem>(views().createButton);
    const double createButtonDistance = views().createButtonBottomConstraint->constant();
    BannerItem* const bannerView = add<BannerItem>(views().bannerView);
};

} // namespace anadrome::desktop
