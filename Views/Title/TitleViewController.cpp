#include "Views/Title/TitleViewController.h"

#include "Models/VideoFileManager.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSTimer.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/StoreKit/SKStoreProductViewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Views/Common/StoreTexts.h"
#include "Views/Common/ViewHelper.h"

#include <utility>

namespace anadrome {

namespace {

constexpr CGFloat smallestTitleScale = 0.5;

// What covers the screen needs a moment to go before the store's sheet may come, and more so at first.
constexpr double firstSheetDelay = 0.5;
constexpr double laterSheetDelay = 0.01;

} // namespace

std::shared_ptr<TitleViewController> TitleViewController::self() {
    return std::static_pointer_cast<TitleViewController>(shared_from_this());
}

void TitleViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    setTexts();
    m_views->videoQualitySegmentedControl->setSelectedSegmentIndex(
        NSUserDefaults::standardUserDefaults().integerForKey("resolutionIndexKey"));
    // What an earlier run left.
    VideoFileManager::removeAllWorkFiles();
    gatherConsent();
}

void TitleViewController::setTexts() {
    constexpr auto normal = UIControlState::normal;
    m_views->moreAppsLabel->setText(NSLocalizedString("MoreApps"));
    const std::array appNames{NSLocalizedString("MoreApp1"), NSLocalizedString("MoreApp2"),
                              NSLocalizedString("MoreApp3"), NSLocalizedString("MoreApp4"),
                              NSLocalizedString("MoreApp5")};
    for (std::size_t i = 0; i < appNames.size(); ++i)
        m_views->apps[i].label->setText(appNames[i]);
    m_views->cameraButton->setTitle(NSLocalizedString("CaptureVideo"), normal);
    m_views->libraryButton->setTitle(NSLocalizedString("SelectFromLibrary"), normal);
    m_views->iCloudButton->setTitle(NSLocalizedString("SelectFromFiles"), normal);
    const auto& share = m_views->shareAppButton;
    share->setTitle(NSLocalizedString("ShareToFriends"), normal);
    share->titleLabel()->setAdjustsFontSizeToFitWidth(true);
    share->titleLabel()->setMinimumScaleFactor(smallestTitleScale);
    m_views->cameraNotice->setText(NSLocalizedString("CameraNotice"));
    m_views->videoQualityLabel->setText(NSLocalizedString("ResolutionSetting"));
    const auto& quality = m_views->videoQualitySegmentedControl;
    quality->setTitle(NSLocalizedString("ResolutionLQ"), 0);
    quality->setTitle(NSLocalizedString("ResolutionMQ"), 1);
    quality->setTitle(NSLocalizedString("ResolutionHQ"), 2);
}

void TitleViewController::videoQualityChanged() {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.setInteger(m_views->videoQualitySegmentedControl->selectedSegmentIndex(),
                           "resolutionIndexKey");
    preferences.synchronize();
}

void TitleViewController::infoButtonTapped() {
    presentViewController(UIStoryboard::storyboardWithName("Settings").instantiateInitialViewController(),
                          true);
}

void TitleViewController::shareAppTapped() {
    FIRAnalytics::logEventWithName("top_share");
    std::vector<UIActivityViewController::Item> items{recommendation()};
    if (const std::string page = Deployment::current().storePage(); !page.empty())
        items.emplace_back(WebLink{page});
    presentViewController(std::make_shared<UIActivityViewController>(items), true);
}

void TitleViewController::appButtonTapped(long tag) {
    FIRAnalytics::logEventWithName("other_app_" + std::to_string(tag));
    const auto& identifiers = Deployment::current().appStripIdentifiers;
    if (tag < 0 || tag >= std::ssize(identifiers))
        fatalError("The app strip has no button " + std::to_string(tag));
    ViewHelper::showHud(view());
    const auto sheet = std::make_shared<SKStoreProductViewController>();
    sheet->loadProductWithParameters(
        {{SKStoreProductParameterITunesItemIdentifier, identifiers[static_cast<std::size_t>(tag)]}},
        [weak = weakSelf(), sheet](bool isLoaded, const std::optional<NSError>& error) {
            ViewHelper::hideHud();
            if (!isLoaded)
                return debugLog(describe(error));
            if (const auto self = weak.lock())
                self->presentStoreSheet(sheet);
        });
}

void TitleViewController::presentStoreSheet(const std::shared_ptr<SKStoreProductViewController>& sheet) {
    const double delay = std::exchange(m_hasPresentedStoreVC, true) ? laterSheetDelay : firstSheetDelay;
    NSTimer::scheduledTimerWithTimeInterval(delay, false, [weak = weakSelf(), sheet](NSTimer&) {
        if (const auto self = weak.lock())
            self->presentViewController(sheet, true);
    });
}

} // namespace anadrome
