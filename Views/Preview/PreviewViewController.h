#pragma once

#include "Models/MovieRecipe.h"
#include "Platform/Foundation/NSError.h"
#include "Platform/Foundation/URL.h"
#include "Platform/UIKit/UIViewController.h"
#include "Views/Preview/PreviewViews.h"

#include <optional>

namespace anadrome {

class AVPlayer;
class AVPlayerViewController;

/// The Preview screen: plays the finished movie, saves it, shares it, and leads back to the start. Main
/// thread only. The movie stays a work file, which goes with the others on the way back.
class PreviewViewController : public UIViewController {
public:
    /// Loads them first if need be.
    const PreviewViews& views() {
        view();
        return *m_views;
    }

    /// The finished movie. To be set before the view loads; without one that is fatal.
    void setCompressedVideoUrl(URL url) { m_compressedVideoUrl = std::move(url); }
    const std::optional<URL>& compressedVideoUrl() const { return m_compressedVideoUrl; }
    /// The recipe of the movie; none if unknown. To be set before the screen is shown.
    void setRecipe(const std::optional<MovieRecipe>& recipe) { m_recipe = recipe; }
    const std::optional<MovieRecipe>& recipe() const { return m_recipe; }

    /// Plays the movie when the user wants it; null before the view is loaded.
    const std::shared_ptr<AVPlayer>& playerBefore() const { return m_playerBefore; }
    /// Shows it; null before the view is loaded.
    const std::shared_ptr<AVPlayerViewController>& playerController() const { return m_playerController; }

protected:
    void viewDidLoad() override;

private:
    friend void buildPreviewViews(PreviewViewController& preview, UIView& root);

    void setupViews();
    void addPlayerController();
    const URL& movie() const;

    void saveTap();
    void saveToPhotoLibrary();
    void handleSaveResult(bool success, const std::optional<NSError>& error);
    void requestReviewIfNeeded();
    void shareTap();
    void shareAppTap();
    void selectOtherVideoTap();

    std::optional<PreviewViews> m_views;
    std::optional<URL> m_compressedVideoUrl;
    std::optional<MovieRecipe> m_recipe;
    std::shared_ptr<AVPlayer> m_playerBefore;
    std::shared_ptr<AVPlayerViewController> m_playerController;
};

} // namespace anadrome
