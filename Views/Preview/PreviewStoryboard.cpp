#include "Views/Preview/PreviewStoryboard.h"

#include "Views/Preview/PreviewViewController.h"

namespace anadrome {

void buildPreviewViews(PreviewViewController& preview, UIView& root) {
    using Preview = PreviewViewController;
    constexpr auto tap = UIControlEvents::touchUpInside;
    const PreviewViews& views = preview.m_views.emplace(root);
    views.saveButton->addTarget(preview, &Preview::saveTap, tap);
    views.shareButton->addTarget(preview, &Preview::shareTap, tap);
    views.shareAppButton->addTarget(preview, &Preview::shareAppTap, tap);
    views.selectOtherVideoButton->addTarget(preview, &Preview::selectOtherVideoTap, tap);
}

UIStoryboardScene previewStoryboard() {
    return UIStoryboardScene::ofController(buildPreviewViews);
}

} // namespace anadrome
