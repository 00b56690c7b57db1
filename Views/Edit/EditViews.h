#pragma once

#include "Platform/Services/Ads/GADBannerView.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UIImageView.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UISwitch.h"
#include "Views/Edit/PlayerView.h"

namespace anadrome {

/// The views of the Edit screen, from rear to front.
struct EditViews {
    explicit EditViews(UIView& rootView) : root(rootView) {}

    UIView& root;
    const std::shared_ptr<PlayerView> playerView = root.addNew<PlayerView>();
    const std::shared_ptr<UIImageView> playPauseButtonImageView = root.addNew<UIImageView>();
    const std::shared_ptr<UISlider> videoSeekBar = root.addNew<UISlider>();
    const std::shared_ptr<UILabel> outputTypeLabel = root.addNew<UILabel>();
    const std::shared_ptr<UISegmentedControl> outputTypeSegmentedControl = root.addNew<UISegmentedControl>();
    const std::shared_ptr<UILabel> outputTypeValueLabel = root.addNew<UILabel>();
    const std::shared_ptr<UILabel> outputTypeNoticeLabel = root.addNew<UILabel>();
    const std::shared_ptr<UILabel> reverseSpeedLabel = root.addNew<UILabel>();
    const std::shared_ptr<UILabel> reverseSpeedValueLabel = root.addNew<UILabel>();
    const std::shared_ptr<UISlider> reverseSpeedSlider = root.addNew<UISlider>();
    const std::shared_ptr<UILabel> normalSpeedLabel = root.addNew<UILabel>();
    const std::shared_ptr<UILabel> normalSpeedValueLabel = root.addNew<UILabel>();
    const std::shared_ptr<UISlider> normalSpeedSlider = root.addNew<UISlider>();
    const std::shared_ptr<UISegmentedControl> fileTypeSegmentedControl = root.addNew<UISegmentedControl>();
    const std::shared_ptr<UILabel> exifLabel = root.addNew<UILabel>();
    const std::shared_ptr<UISwitch> exifSwitch = root.addNew<UISwitch>();
    const std::shared_ptr<UIButton> createButton = root.addNew<UIButton>();
    /// From the foot of the button to that of the screen.
    const std::shared_ptr<NSLayoutConstraint> createButtonBottomConstraint =
        root.bottomAnchor().constraintEqualToAnchor(createButton->bottomAnchor());
    /// Null until the screen adds it, when the other views are built.
    std::shared_ptr<GADBannerView> bannerView;
};

} // namespace anadrome
