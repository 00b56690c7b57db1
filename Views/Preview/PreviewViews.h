#pragma once

#include "Platform/UIKit/UIButton.h"

namespace anadrome {

/// The views of the Preview screen, from rear to front.
struct PreviewViews {
    explicit PreviewViews(UIView& rootView) : root(rootView) {}

    UIView& root;
    const std::shared_ptr<UIView> videoContainerView1 = root.addNew<UIView>();
    const std::shared_ptr<UIButton> saveButton = root.addNew<UIButton>();
    const std::shared_ptr<UIButton> shareButton = root.addNew<UIButton>();
    const std::shared_ptr<UIButton> shareAppButton = root.addNew<UIButton>();
    const std::shared_ptr<UIButton> selectOtherVideoButton = root.addNew<UIButton>();
};

} // namespace anadrome
