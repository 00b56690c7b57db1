#include "Views/Preview/PreviewStoryboard.h"

#include "Platform/UIKit/UIButton.h"
#include "Views/Preview/PreviewViewController.h"

namespace anadrome {

UIStoryboardScene previewStoryboard() {
    constexpr auto tap = UIControlEvents::touchUpInside;
    UIStoryboardScene scene = UIStoryboardScene::ofController<PreviewViewController>();
    scene.add<UIView>("videoContainerView1")
        .add<UIButton>("saveButton", {}, {{tap, "saveTap"}})
        .add<UIButton>("shareButton", {}, {{tap, "shareTap"}})
        .add<UIButton>("shareAppButton", {}, {{tap, "shareAppTap"}})
        .add<UIButton>("selectOtherVideoButton", {}, {{tap, "selectOtherVideoTap"}});
    return scene;
}

} // namespace anadrome
