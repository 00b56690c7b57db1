#pragma once

#include "Platform/AVFoundation/AVPlayerItem.h"
#include "Platform/AVFoundation/PictureSink.h"
#include "Platform/AVFoundation/Playback/PeriodicObservers.h"
#include "Platform/AVFoundation/Playback/PictureFeed.h"
#include "Platform/AVFoundation/Playback/PlaybackTimeline.h"
#include "Platform/AVFoundation/Playback/SoundRun.h"
#include "Platform/AVFoundation/PlaybackClock.h"

#include <functional>
#include <memory>

namespace anadrome::playback {

/// What a player does: moves the item's time, by the sound that is heard or else by the clock, and shows the
/// pictures that are due. Main thread only; all decoding is the feeds'. The first picture from a new place
/// holds the time up until it is there, so that play doesn't run away from its pictures; later ones never do.
class PlayerEngine : public std::enable_shared_from_this<PlayerEngine> {
public:
    using Completion = std::function<void(bool finished)>;

    explicit PlayerEngine(std::shared_ptr<PlaybackClock> clock) : m_clock(std::move(clock)) {}
    ~PlayerEngine();
    PlayerEngine(const PlayerEngine&) = delete;
    PlayerEngine& operator=(const PlayerEngine&) = delete;

    /// Once, before anything else.
    void load(std::shared_ptr<AVPlayerItem> item);
    const std::shared_ptr<AVPlayerItem>& item() const { return m_item; }

    float rate() const { return m_rate; }
    void setRate(float rate);
    CMTime currentTime() const { return m_timeline.at(m_clock->now()); }
    void seek(const CMTime& time, Completion completion);
    PeriodicObservers& observers() { return m_observers; }

    bool isMuted() const { return m_isMuted; }
    void setMuted(bool muted);
    float volume() const { return m_volume; }
    void setVolume(float volume);

    /// The surface and its size in pixels. Null for none.
    void setSink(std::shared_ptr<PictureSink> sink, CGSize size);
    const std::shared_ptr<PictureSink>& sink() const { return m_sink; }

private:
    void itemLoaded();
    bool isReady() const { return m_item && m_item->status() == AVPlayerItemStatus::readyToPlay; }
    bool showsPictures() const { return m_sink && m_feed; }

    void tick();
    bool isAtEnd(const CMTime& time) const;
    void endPlay(const CMTime& time);
    void jump(const CMTime& time);
    /// Lets the time run, or stand, from here on.
    void runFrom(const CMTime& time);
    /// At the sound that is heard, if there is sound. This is where the wall clock is overruled.
    void followSound();
    void startOrStopSound(const CMTime& time);
    Direction direction() const { return m_rate < 0 ? Direction::backwards : Direction::forwards; }

    /// Asks for pictures from the current time on, once the main loop comes round: what changes until then
    /// makes no work.
    void requestPictures();
    /// The same, and the time stands until the first one is there.
    void awaitPictures();
    void startFeed();
    void showDuePicture();
    void stopWaiting();
    void completeSeek(bool finished);

    const std::shared_ptr<PlaybackClock> m_clock;
    std::shared_ptr<AVPlayerItem> m_item;
    AVAssetTrackRef m_track;
    PeriodicObservers m_observers;
    PlaybackTimeline m_timeline;
    float m_rate = 0;
    std::shared_ptr<void> m_ticks;
    Completion m_seekCompletion;

    AVAssetTrackRef m_soundTrack;
    bool m_isMuted = false;
    float m_volume = 1;
    /// Null while there is no sound to be heard.
    std::unique_ptr<SoundRun> m_sound;

    std::shared_ptr<PictureSink> m_sink;
    CGSize m_sinkSize;
    std::shared_ptr<PictureFeed> m_feed;
    FeedStart m_feedStart;
    bool m_isStartPending = false;
    /// For the first picture from a new place.
    bool m_isWaiting = false;
};

} // namespace anadrome::playback
