#pragma once

#include "Models/VideoEncoder.h"
#include "Platform/AVFoundation/AVPlayer.h"
#include "Platform/Foundation/NSNotificationCenter.h"
#include "Platform/Services/Ads/GADInterstitialAd.h"
#include "Platform/UIKit/UIViewController.h"

#include <optional>

namespace anadrome {

class GADBannerView;
class NSLayoutConstraint;
class PlayerView;
class UIButton;
class UIImageView;
class UILabel;
class UISegmentedControl;
class UISlider;
class UISwitch;

/// The Edit screen: plays one clip backwards, lets the user choose what movie is made of it, and makes it.
/// Main thread only, apart from the job's stages (EditViewController+Job.cpp). When it leaves its stack, or
/// goes away without that, it takes all work files along.
class EditViewController : public UIViewController, public GADFullScreenContentDelegate {
public:
    EditViewController();
    ~EditViewController() override;

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

    void didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override;

protected:
    void declareConnections(UIConnections& connections) override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;

private:
    /// The container of the movies that are made, and its file extension with the dot.
    struct Container {
        AVFileType fileType;
        std::string extension;
    };
    /// What the controls held when the job began.
    struct Job {
        Container container;
        bool isReverseOnly;
    };
    /// How a stage ended; a failure has a message.
    struct StageResult {
        bool success;
        std::optional<std::string> message;
    };

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
    Container chosenContainer() const;
    static URL newWorkUrl(const Container& container);
    std::shared_ptr<EditViewController> self();
    std::weak_ptr<EditViewController> weakSelf() { return self(); }

    // Preview (EditViewController+Preview.cpp)
    void applySpeedToPreview();
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

    // Job chain (EditViewController+Job.cpp)
    void createVideo();
    void startReverse(const Job& job);
    void reverseFinished(const Job& job, const URL& reverseOutput, const StageResult& result);
    void reverseSpeedChangeFinished(const Job& job, const URL& reversed, const StageResult& result);
    void normalSpeedChangeFinished(const Job& job, const URL& forward, const URL& reversed,
                                   const StageResult& result);
    void mergeVideos(const Job& job, const URL& forward, const URL& reversed);
    void mergeFinished(const URL& merged, const StageResult& result);
    void stageFailed(const StageResult& result);
    void finishOnMainQueue(const URL& url);
    void finishOutput(const URL& url);
    void compressFinished(const Result<URL>& result);
    void presentInterstitialOrPreview();
    void showPreview();

    // Interstitial (EditViewController+Interstitial.cpp)
    void loadInterstitial();
    bool presentInterstitial();
    void adDidDismissFullScreenContent() override;

    // Banner (EditViewController+Banner.cpp)
    void updateBannerView();

    std::weak_ptr<PlayerView> m_playerView;
    std::weak_ptr<UIImageView> m_playPauseButtonImageView;
    std::weak_ptr<UISlider> m_videoSeekBar;
    std::weak_ptr<UILabel> m_outputTypeLabel;
    std::weak_ptr<UILabel> m_outputTypeNoticeLabel;
    std::weak_ptr<UISegmentedControl> m_outputTypeSegmentedControl;
    std::weak_ptr<UILabel> m_outputTypeValueLabel;
    std::weak_ptr<UILabel> m_reverseSpeedLabel;
    std::weak_ptr<UILabel> m_reverseSpeedValueLabel;
    std::weak_ptr<UISlider> m_reverseSpeedSlider;
    std::weak_ptr<UILabel> m_normalSpeedLabel;
    std::weak_ptr<UILabel> m_normalSpeedValueLabel;
    std::weak_ptr<UISlider> m_normalSpeedSlider;
    std::weak_ptr<UISegmentedControl> m_fileTypeSegmentedControl;
    std::weak_ptr<UILabel> m_exifLabel;
    std::weak_ptr<UISwitch> m_exifSwitch;
    std::weak_ptr<UIButton> m_createButton;
    std::weak_ptr<NSLayoutConstraint> m_createButtonBottomConstraint;

    const std::unique_ptr<VideoEncoder> m_videoEncoder;
    std::shared_ptr<AVPlayer> m_player = std::make_shared<AVPlayer>();
    std::optional<AVPlayer::TimeObserverToken> m_timeObserverToken;
    std::optional<URL> m_inputUrl;
    std::optional<URL> m_outputUrlForPreview;
    float m_playbackSpeed = -1.0F;
    double m_reverseSpeed = 1.0;
    double m_normalSpeed = 1.0;
    bool m_isReverseFirst = false;
    std::shared_ptr<GADInterstitialAd> m_interstitial;
    std::shared_ptr<GADBannerView> m_bannerView;
    bool m_hasLeftStack = false;
};

} // namespace anadrome
