#include "Platform/AVFoundation/AVPlayer.h"

#include "Platform/AVFoundation/Playback/PlayerEngine.h"
#include "Platform/Foundation/Print.h"

#include <algorithm>
#include <cmath>

namespace anadrome {

AVPlayer::AVPlayer() : m_engine(std::make_shared<playback::PlayerEngine>(steadyPlaybackClock())) {}

AVPlayer::AVPlayer(const URL& url, std::shared_ptr<PlaybackClock> clock)
    : m_engine(std::make_shared<playback::PlayerEngine>(std::move(clock))) {
    m_engine->load(std::make_shared<AVPlayerItem>(url));
}

AVPlayer::~AVPlayer() = default;

const std::shared_ptr<AVPlayerItem>& AVPlayer::currentItem() const {
    return m_engine->item();
}

void AVPlayer::setRate(float rate) {
    if (!std::isfinite(rate))
        fatalError("AVPlayer: the rate must be a finite number");
    m_engine->setRate(rate);
}

float AVPlayer::rate() const {
    return m_engine->rate();
}

void AVPlayer::setMuted(bool muted) {
    m_engine->setMuted(muted);
}

bool AVPlayer::isMuted() const {
    return m_engine->isMuted();
}

void AVPlayer::setVolume(float volume) {
    // Not a number fails every comparison.
    m_engine->setVolume(volume > 0 ? std::min(volume, 1.0F) : 0.0F);
}

float AVPlayer::volume() const {
    return m_engine->volume();
}

CMTime AVPlayer::currentTime() const {
    return m_engine->currentTime();
}

void AVPlayer::seekToTime(const CMTime& time, const CMTime&, const CMTime&,
                          std::function<void(bool finished)> completion) {
    if (!CMTIME_IS_NUMERIC(time))
        fatalError("AVPlayer: the time of a seek must be numeric");
    m_engine->seek(time, std::move(completion));
}

AVPlayer::TimeObserverToken
AVPlayer::addPeriodicTimeObserverForInterval(const CMTime& interval, DispatchQueue queue,
                                             std::function<void(const CMTime& time)> block) {
    if (!CMTIME_IS_NUMERIC(interval) || interval.value <= 0)
        fatalError("AVPlayer: the interval of a time observer must be positive");
    return m_engine->observers().add(interval, std::move(queue), std::move(block));
}

void AVPlayer::removeTimeObserver(const TimeObserverToken& token) {
    m_engine->observers().remove(token);
}

} // namespace anadrome
