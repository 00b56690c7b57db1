// The Edit screen's player: the clip backwards and without sound, a seek bar against the clip's clock.

#include "Models/VideoFileManager.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/Print.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"

namespace anadrome {

namespace {

constexpr double tickSeconds = 0.1;
constexpr std::int32_t tickTimescale = 1'000'000'000;
constexpr std::int32_t seekTimescale = 600;
constexpr double iconSeconds = 0.25;
constexpr double iconFadeSeconds = 0.35;

float seconds32(const CMTime& time) {
    return static_cast<float>(CMTimeGetSeconds(time));
}

} // namespace

void EditViewController::applySpeedToPreview() {
    ViewHelper::showHud(view());
    const URL output = VideoFileManager::newWorkUrl(chosenFileType());
    m_videoEncoder->changeSpeed(
        *m_inputUrl, output, chosenFileType(), m_reverseSpeed, [](float) {},
        [weak = weakSelf(), output](bool success, const std::optional<std::string>& message) {
            debugLog(std::string("result = ") + (success ? "true" : "false"));
            ViewHelper::hideHud();
            if (const auto self = weak.lock())
                self->renditionFinished(output, success, message);
        });
}

void EditViewController::renditionFinished(const URL& rendition, bool success,
                                           const std::optional<std::string>& message) {
    if (!success) {
        if (!message)
            fatalError("A rendition failed without a message");
        return ViewHelper::showError(self(), *message);
    }
    DispatchQueue::main().async([weak = weakSelf(), rendition] {
        if (const auto alive = weak.lock())
            alive->loadPreviewPlayer(rendition);
    });
}

void EditViewController::loadPreviewPlayer(const URL& url) {
    removeTimeObserver();
    m_player = std::make_shared<AVPlayer>(url);
    m_player->setMuted(true);
    m_views->playerView->layer().setPlayer(m_player);
    const std::shared_ptr<AVPlayerItem>& item = m_player->currentItem();
    m_views->videoSeekBar->setMaximumValue(seconds32(item->asset()->duration()));
    seekToEnd();
    playBackwards();
    m_views->playPauseButtonImageView->setAlpha(0);
    addTimeObserver();
    NSNotificationCenter::defaultCenter().addObserver(self(),
                                                      &EditViewController::playerDidFinishPlayingWithNote,
                                                      AVPlayerItemDidPlayToEndTimeNotification, item);
}

void EditViewController::playBackwards() {
    // A rendition has the speed applied already, and is played that much faster again.
    m_player->setRate(m_playbackSpeed * static_cast<float>(m_reverseSpeed));
}

void EditViewController::seekToEnd() {
    if (!m_player->currentItem())
        fatalError("The preview has nothing to play");
    m_player->seekToTime(m_player->currentItem()->asset()->duration(), kCMTimeZero, kCMTimeZero);
}

void EditViewController::addTimeObserver() {
    removeTimeObserver();
    m_timeObserverToken = m_player->addPeriodicTimeObserverForInterval(
        CMTimeMakeWithSeconds(tickSeconds, tickTimescale), DispatchQueue::main(),
        [weak = weakSelf()](const CMTime& time) {
            if (const auto self = weak.lock())
                self->timePassed(time);
        });
}

void EditViewController::removeTimeObserver() {
    if (!m_timeObserverToken)
        return;
    m_player->removeTimeObserver(*m_timeObserverToken);
    m_timeObserverToken.reset();
}

void EditViewController::timePassed(const CMTime& time) {
    const std::shared_ptr<AVPlayerItem>& item = m_player->currentItem();
    const auto& seekBar = m_views->videoSeekBar;
    if (!item || seekBar->isTracking())
        return;
    // The bar goes from left to right while the clip runs from its end to its start.
    seekBar->setValue(seconds32(item->duration()) - seconds32(time));
}

void EditViewController::seekBarChanged() {
    const std::shared_ptr<AVPlayerItem>& item = m_player->currentItem();
    // An item that isn't ready has no length yet; one that can't be played never will.
    if (!item || !CMTIME_IS_NUMERIC(item->duration()))
        return;
    const double seconds = seconds32(item->duration()) - m_views->videoSeekBar->value();
    m_player->seekToTime(CMTimeMakeWithSeconds(seconds, seekTimescale), kCMTimeZero, kCMTimeZero);
}

void EditViewController::playerTap() {
    togglePlayback();
}

void EditViewController::togglePlayback() {
    if (m_player->rate() < 0) {
        m_player->pause();
        showPlayIcon();
        return;
    }
    playBackwards();
    const std::weak_ptr<UIImageView> icon = m_views->playPauseButtonImageView;
    UIView::animateWithDuration(
        iconSeconds, [icon] { icon.lock()->setImage(UIImage::systemImageNamed("pause.circle")); },
        [icon](bool) {
            UIView::animateWithDuration(iconFadeSeconds, [icon] {
                if (const auto alive = icon.lock())
                    alive->setAlpha(0);
            });
        });
}

void EditViewController::showPlayIcon() {
    const auto& icon = m_views->playPauseButtonImageView;
    icon->setImage(UIImage::systemImageNamed("play.circle"));
    UIView::animateWithDuration(iconSeconds, [&] { icon->setAlpha(1); });
}

void EditViewController::playerDidFinishPlayingWithNote(const NSNotification&) {
    seekToEnd();
    showPlayIcon();
}

} // namespace anadrome
