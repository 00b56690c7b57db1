#pragma once

#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"

#include <array>

namespace anadrome {

/// The views of the Title screen, from rear to front.
struct TitleViews {
    /// One of the maker's other programs.
    struct App {
        explicit App(UIView& root) : label(root.addNew<UILabel>()), button(root.addNew<UIButton>()) {}

        const std::shared_ptr<UILabel> label;
        const std::shared_ptr<UIButton> button;
    };

    explicit TitleViews(UIView& rootView) : root(rootView) {}

    UIView& root;
    const std::shared_ptr<UIButton> infoButton = root.addNew<UIButton>();
    const std::shared_ptr<UIButton> cameraButton = root.addNew<UIButton>();
    const std::shared_ptr<UILabel> cameraNotice = root.addNew<UILabel>();
    const std::shared_ptr<UIButton> libraryButton = root.addNew<UIButton>();
    const std::shared_ptr<UIButton> iCloudButton = root.addNew<UIButton>();
    const std::shared_ptr<UILabel> videoQualityLabel = root.addNew<UILabel>();
    const std::shared_ptr<UISegmentedControl> videoQualitySegmentedControl =
        root.addNew<UISegmentedControl>();
    const std::shared_ptr<UILabel> moreAppsLabel = root.addNew<UILabel>();
    const std::array<App, 5> apps{App(root), App(root), App(root), App(root), App(root)};
    const std::shared_ptr<UIButton> shareAppButton = root.addNew<UIButton>();
};

} // namespace anadrome
