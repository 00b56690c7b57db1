#pragma once

#include "Models/MovieJob.h"
#include "Platform/AVFoundation/AVPlayer.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Platform/Services/Ads/GADInterstitialAd.h"
#include "Platform/UIKit/UIViewController.h"
#include "Views/Edit/EditViews.h"

#include <optional>

namespace anadrome {

/// The Edit screen: plays one clip backwards, lets the user choose what movie is made of it, and makes it.
/// Main thread only. When it leaves its stack, or goes away without that, it ends its job and takes all work
/// files along.
class EditViewController : public UIViewController,
                           public GADFullScreenContentDelegate,
                           public MovieJob::Observer {
public:
    EditViewController();
    ~EditViewController() override;

    /// Loads them first if need be.
    const EditViews& views() {
        view();
        return *m_views;
    }

    /// The clip. To be set before the view loads; without one that is fatal.
    void setInputUrl(URL inputUrl) { m_inputUrl = std::move(inputUrl); }
    const std::optional<URL>& inputUrl() const { return m_inputUrl; }

    /// The movie of the last job that succeeded.
    const std::optional<URL>& outputUrlForPreview() const { return m_outputUrlForPreview; }
    /// Of the preview.
    const std::shared_ptr<AVPlayer>& player() const { return m_player; }
    /// How fast the movie's stretches run: multiples of 0.1 from 0.1 to 10.
    double reverseSpeed() const { return m_reverseSpeed; }
    double normalSpeed() const { return m_normalSpeed; }

    /// The movie that is being made; null if none is.
    const std::shared_ptr<MovieJob>& job() const { return m_job; }
    /// Called with each new job just before it starts, so that others can observe it, too; with null when the
    /// screen drops a job that runs, which ends it without an event.
    void setJobHandler(std::function<void(const std::shared_ptr<MovieJob>&)> handler) {
        m_jobHandler = std::move(handler);
    }

    void didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override;

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

private:
    friend void buildEditViews(EditViewController& edit, UIView& root);

    // Controls (EditViewController.cpp)
    void setupViews();
    void setupCaptions();
    void updateOutputTypeValueLabel();
    void setNormalSpeedControlsEnabled(bool enabled);
    static void updateSpeed(const UISlider& slider, double& field, UILabel& label);
    void outputTypeChanged();
    void reverseSpeedChanged();
    void normalSpeedChanged();
    void speedSliderTouchUp();
    void fileTypeChanged();
    void exifChanged();
    void createTap();
    AVFileType chosenFileType() const;
    MovieRecipe chosenRecipe() const;
    std::shared_ptr<EditViewController> self();
    std::weak_ptr<EditViewController> weakSelf() { return self(); }

    // Preview (EditViewController+Preview.cpp)
    void applySpeedToPreview();
    void renditionFinished(const URL& rendition, bool success, const std::optional<std::string>& message);
    void loadPreviewPlayer(const URL& url);
    void playBackwards();
    void seekToEnd();
    void addTimeObserver();
    void removeTimeObserver();
    void timePassed(const CMTime& time);
    void seekBarChanged();
    void playerTap();
    void togglePlayback();
    void showPlayIcon();
    void playerDidFinishPlayingWithNote(const NSNotification& note);

    // Disk space (EditViewController+Space.cpp)
    /// False, with a dialog that says why, if the disk can't hold the clip's raw frames.
    bool hasRoomForFrames();

    // The movie (EditViewController+Job.cpp)
    void createVideo();
    void jobBeganStage(const MovieJob& job, MovieJob::Stage stage) override;
    void jobProgressed(const MovieJob& job) override;
    void jobEnded(const MovieJob& job, const MovieJob::Outcome& outcome) override;
    void leaveJob();
    void finishOutput(const URL& url, const MovieRecipe& recipe);
    void showPreview();

    // Interstitial (EditViewController+Interstitial.cpp)
    void loadInterstitial();
    bool presentInterstitial();
    void adDidDismissFullScreenContent() override;

    // Banner (EditViewController+Banner.cpp)
    void updateBannerView();

    std::optional<EditViews> m_views;
    /// For renditions of the preview.
    const std::unique_ptr<VideoEncoder> m_videoEncoder;
    std::shared_ptr<MovieJob> m_job;
    std::function<void(const std::shared_ptr<MovieJob>&)> m_jobHandler;
    std::shared_ptr<AVPlayer> m_player = std::make_shared<AVPlayer>();
    std::optional<AVPlayer::TimeObserverToken> m_timeObserverToken;
    std::optional<URL> m_inputUrl;
    std::optional<URL> m_outputUrlForPreview;
    /// Recipe of that movie.
    std::optional<MovieRecipe> m_outputRecipe;
    float m_playbackSpeed = -1.0F;
    double m_reverseSpeed = 1.0;
    double m_normalSpeed = 1.0;
    std::shared_ptr<GADInterstitialAd> m_interstitial;
    bool m_hasLeftStack = false;
};

} // namespace anadrome
