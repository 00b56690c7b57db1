#include "Views/Title/TitleStoryboard.h"

#include "Platform/Services/Deployment.h"
#include "Views/Common/UIView+Border.h"
#include "Views/Title/TitleViewController.h"

#include <algorithm>

namespace anadrome {

namespace {

constexpr auto tap = UIControlEvents::touchUpInside;

void setFirstValues(const TitleViews& views) {
    for (const auto& card : {views.cameraButton, views.libraryButton, views.iCloudButton}) {
        setCornerRadius(*card, 14);
        setBorderWidth(*card, 1);
        setBorderColor(*card, UIColor::separatorColor());
    }
    views.videoQualitySegmentedControl->setTitles({"", "", ""});
}

bool hasPage(const std::string& identifier) {
    return !Deployment::current().productPage(identifier).empty();
}

/// Hides the apps without a deployed store page, and the heading if that leaves none.
void hideAppsWithoutPage(const TitleViews& views) {
    const auto& identifiers = Deployment::current().appStripIdentifiers;
    views.moreAppsLabel->setHidden(std::ranges::none_of(identifiers, hasPage));
    for (std::size_t index = 0; index < views.apps.size(); ++index) {
        views.apps[index].label->setHidden(!hasPage(identifiers[index]));
        views.apps[index].button->setHidden(!hasPage(identifiers[index]));
    }
}

} // namespace

void buildTitleViews(TitleViewController& title, UIView& root) {
    using Title = TitleViewController;
    const TitleViews& views = title.m_views.emplace(root);
    setFirstValues(views);
    hideAppsWithoutPage(views);
    views.infoButton->addTarget(title, &Title::infoButtonTapped, tap);
    views.cameraButton->addTarget(title, &Title::cameraTap, tap);
    views.libraryButton->addTarget(title, &Title::libraryTap, tap);
    views.iCloudButton->addTarget(title, &Title::iCloudTap, tap);
    views.videoQualitySegmentedControl->addTarget(title, &Title::videoQualityChanged,
                                                  UIControlEvents::valueChanged);
    for (long tag = 0; const TitleViews::App& app : views.apps)
        app.button->addAction(tap, [weak = title.weakSelf(), tag = tag++] {
            if (const auto self = weak.lock())
                self->appButtonTapped(tag);
        });
    views.shareAppButton->addTarget(title, &Title::shareAppTapped, tap);
}

UIStoryboardScene titleStoryboard() {
    return UIStoryboardScene::ofController(buildTitleViews).inNavigationController();
}

} // namespace anadrome
