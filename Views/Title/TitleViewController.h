#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/PhotosUI/PHPickerViewController.h"
#include "Platform/UIKit/UIDocumentPickerViewController.h"
#include "Platform/UIKit/UIImagePickerController.h"
#include "Views/Title/TitleViews.h"

#include <optional>

namespace anadrome {

class SKStoreProductViewController;

/// The first screen: takes in a clip from the camera, the user's movies or a file and opens the Edit screen
/// with it; holds the quality of the movies; asks for consent and starts the ads. Main thread only, but for
/// the copying of a picked movie.
class TitleViewController : public UIViewController,
                            public UIImagePickerControllerDelegate,
                            public PHPickerViewControllerDelegate,
                            public UIDocumentPickerDelegate {
public:
    /// Loads them first if need be.
    const TitleViews& views() {
        view();
        return *m_views;
    }

    /// Opens the Edit screen with a clip where it lies, and leaves whatever screens are open.
    void openClip(const URL& clip);
    /// The action of the button that picks a file.
    void iCloudTap();

    void didFinishPickingMediaWithInfo(UIImagePickerController& picker, const Info& info) override;
    void imagePickerControllerDidCancel(UIImagePickerController& picker) override;
    void didFinishPicking(PHPickerViewController& picker,
                          const std::vector<PHPickerResult>& results) override;
    void didPickDocumentsAtURLs(UIDocumentPickerViewController& picker,
                                const std::vector<URL>& urls) override;

protected:
    void viewDidLoad() override;

private:
    friend void buildTitleViews(TitleViewController& title, UIView& root);

    void setTexts();
    std::shared_ptr<TitleViewController> self();
    std::weak_ptr<TitleViewController> weakSelf() { return self(); }

    // Intake (TitleViewController+Intake.cpp)
    void cameraTap();
    void libraryTap();
    void takePickedMovie(const std::optional<URL>& movie, const std::optional<NSError>& error);
    /// The copy, or an error with a sentence for the user.
    static Result<URL> copyToWorkFolder(const URL& source);
    void openEditScreen(const URL& url);

    void infoButtonTapped();
    void shareAppTapped();
    void videoQualityChanged();
    void appButtonTapped(long tag);
    void presentStoreSheet(const std::shared_ptr<SKStoreProductViewController>& sheet);

    // Consent (TitleViewController+Consent.cpp)
    void gatherConsent();
    void consentUpdated(const std::optional<NSError>& error);
    void consentFormFinished(const std::optional<NSError>& error);
    void scheduleMobileAdsStart();
    void startMobileAds();

    std::optional<TitleViews> m_views;
    bool m_isMobileAdsStartCalled = false;
    bool m_hasPresentedStoreVC = false;
};

} // namespace anadrome
