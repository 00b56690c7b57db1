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
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UIConnections.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISegmentedControl.h"
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

void TitleViewController::declareConnections(UIConnections& connections) {
    connections.outlet("moreAppsLabel", m_moreAppsLabel);
    for (std::size_t i = 0; i < m_appLabels.size(); ++i)
        connections.outlet("app" + std::to_string(i + 1) + "Label", m_appLabels[i]);
    connections.outlet("shareAppButton", m_shareAppButton);
    connections.outlet("cameraButton", m_cameraButton);
    connections.outlet("libraryButton", m_libraryButton);
    connections.outlet("iCloudButton", m_iCloudButton);
    connections.outlet("cameraNotice", m_cameraNotice);
    connections.outlet("videoQualityLabel", m_videoQualityLabel);
    connections.outlet("videoQualitySegmentedControl", m_videoQualitySegmentedControl);
    connections.action("cameraTap", [this] { cameraTap(); });
    connections.action("libraryTap", [this] { libraryTap(); });
    connections.action("iCloudTap", [this] { iCloudTap(); });
    connections.action("infoButtonTapped", [this] { infoButtonTapped(); });
    connections.action("shareAppTapped", [this] { shareAppTapped(); });
    connections.action("videoQualityChanged", [this] { videoQualityChanged(); });
    connections.actionOfSender("appButtonTapped", [this](UIView& button) { appButtonTapped(button.tag()); });
}

void TitleViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    setTexts();
    m_videoQualitySegmentedControl.lock()->setSelectedSegmentIndex(
        NSUserDefaults::standardUserDefaults().integerForKey("resolutionIndexKey"));
    // What an earlier run left.
    VideoFileManager::removeAllWorkFiles();
    gatherConsent();
}

void TitleViewController::setTexts() {
    constexpr auto normal = UIControlState::normal;
    m_moreAppsLabel.lock()->setText(NSLocalizedString("MoreApps"));
    const std::array appNames{NSLocalizedString("MoreApp1"), NSLocalizedString("MoreApp2"),
                              NSLocalizedString("MoreApp3"), NSLocalizedString("MoreApp4"),
                              NSLocalizedString("MoreApp5")};
    for (std::size_t i = 0; i < m_appLabels.size(); ++i)
        m_appLabels[i].lock()->setText(appNames[i]);
    m_cameraButton.lock()->setTitle(NSLocalizedString("CaptureVideo"), normal);
    m_libraryButton.lock()->setTitle(NSLocalizedString("SelectFromLibrary"), normal);
    m_iCloudButton.lock()->setTitle(NSLocalizedString("SelectFromFiles"), normal);
    const auto share = m_shareAppButton.lock();
    share->setTitle(NSLocalizedString("ShareToFriends"), normal);
    share->titleLabel()->setAdjustsFontSizeToFitWidth(true);
    share->titleLabel()->setMinimumScaleFactor(smallestTitleScale);
    m_cameraNotice.lock()->setText(NSLocalizedString("CameraNotice"));
    m_videoQualityLabel.lock()->setText(NSLocalizedString("ResolutionSetting"));
    const auto quality = m_videoQualitySegmentedControl.lock();
    quality->setTitle(NSLocalizedString("ResolutionLQ"), 0);
    quality->setTitle(NSLocalizedString("ResolutionMQ"), 1);
    quality->setTitle(NSLocalizedString("ResolutionHQ"), 2);
}

void TitleViewController::videoQualityChanged() {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.setInteger(m_videoQualitySegmentedControl.lock()->selectedSegmentIndex(),
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
