#include "Views/Preview/PreviewViewController.h"

#include "Models/VideoFileManager.h"
#include "Platform/AVKit/AVPlayerViewController.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Photos/PHAssetChangeRequest.h"
#include "Platform/Photos/PHPhotoLibrary.h"
#include "Platform/Photos/PHPhotosError.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/StoreKit/SKStoreReviewController.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Platform/UIKit/UIWindowScene.h"
#include "Views/Common/StoreTexts.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome {

namespace {

constexpr CGFloat smallestTitleScale = 0.5;

std::string messageFor(const std::optional<NSError>& error) {
    if (!error)
        return "Failed to save a video";
    switch (error->code()) {
    case PHPhotosErrorAccessUserDenied:
        return NSLocalizedString("error.accessUserDenied");
    case PHPhotosErrorNotEnoughSpace:
        return NSLocalizedString("error.notEnoughSpace");
    default:
        return error->localizedDescription();
    }
}

/// At the 1st, 6th, 11th ... save.
bool asksForReview(std::int64_t saves) {
    return saves == 1 || (saves >= 6 && saves % 5 == 1);
}

} // namespace

void PreviewViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    setupViews();
}

void PreviewViewController::setupViews() {
    m_views->saveButton->setTitle(NSLocalizedString("Save"), UIControlState::normal);
    m_views->shareButton->setTitle(NSLocalizedString("Share"), UIControlState::normal);
    m_views->selectOtherVideoButton->setTitle(NSLocalizedString("ToTop"), UIControlState::normal);
    m_views->shareAppButton->setTitle(NSLocalizedString("ShareToFriends"), UIControlState::normal);
    for (const auto& button : {m_views->selectOtherVideoButton, m_views->shareAppButton})
        button->titleLabel()->setMinimumScaleFactor(smallestTitleScale);
    m_views->shareAppButton->titleLabel()->setAdjustsFontSizeToFitWidth(true);
    m_playerBefore = std::make_shared<AVPlayer>(movie());
    addPlayerController();
}

void PreviewViewController::addPlayerController() {
    m_playerController = std::make_shared<AVPlayerViewController>();
    m_playerController->setPlayer(m_playerBefore);
    addChildViewController(m_playerController);
    const auto& container = m_views->videoContainerView1;
    const std::shared_ptr<UIView> view = m_playerController->view();
    container->addSubview(view);
    for (const auto& constraint : {view->centerYAnchor().constraintEqualToAnchor(container->centerYAnchor()),
                                   view->centerXAnchor().constraintEqualToAnchor(container->centerXAnchor()),
                                   view->widthAnchor().constraintEqualToAnchor(container->widthAnchor()),
                                   view->heightAnchor().constraintEqualToAnchor(container->heightAnchor())})
        constraint->setActive(true);
    m_playerController->didMoveToParentViewController(parentViewController());
}

const URL& PreviewViewController::movie() const {
    if (!m_compressedVideoUrl)
        fatalError("The Preview screen was opened without a movie");
    return *m_compressedVideoUrl;
}

void PreviewViewController::saveTap() {
    FIRAnalytics::logEventWithName("save");
    ViewHelper::showHud(view());
    saveToPhotoLibrary();
}

void PreviewViewController::saveToPhotoLibrary() {
    const std::weak_ptr<UIViewController> weak = weak_from_this();
    PHPhotoLibrary::sharedPhotoLibrary().performChanges(
        [movie = movie()] { PHAssetChangeRequest::creationRequestForAssetFromVideoAtFileURL(movie); },
        [weak](bool success, const std::optional<NSError>& error) {
            DispatchQueue::main().async([weak, success, error] {
                if (const auto self = std::static_pointer_cast<PreviewViewController>(weak.lock()))
                    self->handleSaveResult(success, error);
            });
        });
}

void PreviewViewController::handleSaveResult(bool success, const std::optional<NSError>& error) {
    ViewHelper::hideHud();
    if (success) {
        ViewHelper::showSuccessHud(view());
        requestReviewIfNeeded();
        return;
    }
    ViewHelper::showError(shared_from_this(), messageFor(error));
}

void PreviewViewController::requestReviewIfNeeded() {
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.setInteger(preferences.integerForKey("doneCountKey") + 1, "doneCountKey");
    preferences.synchronize();
    const auto& scenes = UIApplication::sharedApplication().connectedScenes();
    if (!asksForReview(preferences.integerForKey("doneCountKey")) || scenes.empty())
        return;
    if (const auto scene = std::dynamic_pointer_cast<UIWindowScene>(scenes.front()))
        SKStoreReviewController::requestReviewInScene(*scene);
}

void PreviewViewController::shareTap() {
    FIRAnalytics::logEventWithName("share");
    const std::vector<UIActivityViewController::Item> items{movie()};
    presentViewController(std::make_shared<UIActivityViewController>(items), true);
}

void PreviewViewController::shareAppTap() {
    FIRAnalytics::logEventWithName("result_app_share");
    const std::vector<UIActivityViewController::Item> items{recommendation()};
    presentViewController(std::make_shared<UIActivityViewController>(items), true);
}

void PreviewViewController::selectOtherVideoTap() {
    FIRAnalytics::logEventWithName("to_top");
    VideoFileManager::removeAllWorkFiles();
    if (const auto stack = navigationController())
        stack->popToRootViewControllerAnimated(true);
}

} // namespace anadrome
