#pragma once

#include "Platform/AVFoundation/AVPlayerItem.h"
#include "Platform/AVFoundation/Playback/PeriodicObservers.h"
#include "Platform/AVFoundation/PlaybackClock.h"
#include "Platform/Dispatch/DispatchQueue.h"

namespace anadrome {

namespace playback {
class PlayerEngine;
}

/// Plays a movie file forwards and backwards on an AVPlayerLayer. Main thread only, as is every call from it
/// unless told otherwise; no operation blocks.
///
/// A player begins at time zero with rate 0. Pictures are made only while a layer with a surface shows them;
/// without one the time runs all the same. The first sound track is heard at rate 1, on a device of
/// setSoundSinkFactory(), and the time then follows what is heard.
class AVPlayer {
public:
    using TimeObserverToken = playback::PeriodicObservers::Token;

    /// An empty player: it has no item, and never will.
    AVPlayer();
    /// A player for the file, which is looked at in the background. One that can't be read makes the item
    /// fail.
    explicit AVPlayer(const URL& url, std::shared_ptr<PlaybackClock> clock = steadyPlaybackClock());
    ~AVPlayer();
    AVPlayer(const AVPlayer&) = delete;
    AVPlayer& operator=(const AVPlayer&) = delete;

    /// Null for an empty player.
    const std::shared_ptr<AVPlayerItem>& currentItem() const;

    /// The wanted speed: 1 forwards, 0 not at all, below 0 backwards. Kept until the item is ready, and then
    /// play begins. At the end that play runs towards it becomes 0, and
    /// AVPlayerItemDidPlayToEndTimeNotification is posted; that also happens when play is begun there. A
    /// number that isn't finite is a fatal error.
    void setRate(float rate);
    float rate() const;
    void play() { setRate(1); }
    void pause() { setRate(0); }

    /// Off at first. A muted player opens no sound device; neither does one whose rate isn't 1, which is
    /// silent too.
    void setMuted(bool muted);
    bool isMuted() const;

    /// From 0 to 1, which it is at first; held to that. Apart from being muted.
    void setVolume(float volume);
    float volume() const;

    /// Between zero and the item's duration.
    CMTime currentTime() const;

    /// Moves to the time, or to the end that lies nearer to it; the rate stays. Lands exactly, which meets
    /// all tolerances. The completion is called once: with true when the picture is on screen, or at once if
    /// none is shown; with false at once when another seek comes first, or if the item can't be played. A
    /// time that isn't numeric is a fatal error.
    void seekToTime(const CMTime& time, const CMTime& toleranceBefore, const CMTime& toleranceAfter,
                    std::function<void(bool finished)> completion = {});

    /// Calls the block on the queue, the main one or a serial one, with the time: when it has gone on into
    /// another interval, either way, and when play starts, stops or jumps. Passing several intervals at once
    /// makes one call. The interval must be positive, or it is a fatal error. The player doesn't hold itself
    /// by it: it ends with the player or by removeTimeObserver().
    TimeObserverToken addPeriodicTimeObserverForInterval(const CMTime& interval, DispatchQueue queue,
                                                         std::function<void(const CMTime& time)> block);
    /// No call begins on the main queue afterwards. Ignores a token of another player.
    void removeTimeObserver(const TimeObserverToken& token);

private:
    friend class AVPlayerLayer;

    const std::shared_ptr<playback::PlayerEngine> m_engine;
};

} // namespace anadrome
