#include "Platform/AVFoundation/Playback/PlayerEngine.h"

#include "Platform/AVFoundation/Playback/ShownSize.h"
#include "Platform/Foundation/NSNotificationCenter.h"

#include <utility>

namespace anadrome::playback {

PlayerEngine::~PlayerEngine() {
    if (m_feed)
        m_feed->stop();
}

void PlayerEngine::load(std::shared_ptr<AVPlayerItem> item) {
    m_item = std::move(item);
    m_item->load([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->itemLoaded();
    });
}

void PlayerEngine::itemLoaded() {
    if (!isReady()) {
        m_rate = 0;
        completeSeek(false);
        return;
    }
    const auto videos = m_item->asset()->tracksWithMediaType(AVMediaTypeVideo);
    if (!videos.empty()) {
        m_track = videos.front();
        m_feed = std::make_shared<PictureFeed>(m_track, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->showDuePicture();
        });
    }
    const auto sounds = m_item->asset()->tracksWithMediaType(AVMediaTypeAudio);
    if (!sounds.empty())
        m_soundTrack = sounds.front();
    m_timeline.setEnd(m_item->duration());
    jump(currentTime());
}

void PlayerEngine::setRate(float rate) {
    if (rate == m_rate)
        return;
    m_rate = rate;
    if (!isReady())
        return;
    const CMTime time = currentTime();
    if (m_rate != 0 && m_feedStart.direction != direction())
        awaitPictures();
    runFrom(time);
    m_observers.call(time);
}

void PlayerEngine::seek(const CMTime& time, Completion completion) {
    completeSeek(false);
    m_seekCompletion = std::move(completion);
    if (isReady())
        jump(time);
    else if (m_item && m_item->status() == AVPlayerItemStatus::unknown)
        m_timeline.set(time, 0, m_clock->now());
    else
        completeSeek(false);
}

void PlayerEngine::jump(const CMTime& time) {
    awaitPictures();
    runFrom(time);
    m_observers.call(currentTime());
    if (!m_isWaiting)
        completeSeek(true);
}

void PlayerEngine::runFrom(const CMTime& time) {
    startOrStopSound(time);
    m_timeline.set(time, m_isWaiting || m_sound ? 0 : m_rate, m_clock->now());
    if (m_rate == 0)
        m_ticks.reset();
    else if (!m_ticks)
        m_ticks = m_clock->tick([weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->tick();
        });
}

void PlayerEngine::startOrStopSound(const CMTime& time) {
    m_sound.reset();
    if (m_rate != 1 || m_isMuted || m_isWaiting || !m_soundTrack || isAtEnd(time))
        return;
    const CMTimeRange rest = CMTimeRangeFromTimeToTime(time, m_item->duration());
    m_sound = SoundRun::start(m_soundTrack, rest, m_clock->now());
    if (m_sound)
        m_sound->setVolume(m_volume);
}

void PlayerEngine::followSound() {
    if (!m_sound)
        return;
    const std::chrono::nanoseconds now = m_clock->now();
    const auto [time, rate] = m_sound->follow(currentTime(), now);
    const bool isStuck = m_sound->isStuck(now);
    m_timeline.set(time, isStuck ? m_rate : rate, now);
    if (isStuck)
        m_sound.reset();
}

void PlayerEngine::setMuted(bool muted) {
    if (std::exchange(m_isMuted, muted) != muted && isReady())
        runFrom(currentTime());
}

void PlayerEngine::setVolume(float volume) {
    m_volume = volume;
    if (m_sound)
        m_sound->setVolume(volume);
}

void PlayerEngine::tick() {
    followSound();
    const CMTime time = currentTime();
    if (isAtEnd(time)) {
        endPlay(time);
        return;
    }
    showDuePicture();
    m_observers.passed(time);
}

bool PlayerEngine::isAtEnd(const CMTime& time) const {
    return m_rate < 0 ? CMTimeCompare(time, kCMTimeZero) <= 0 : CMTimeCompare(time, m_item->duration()) >= 0;
}

void PlayerEngine::endPlay(const CMTime& time) {
    m_rate = 0;
    runFrom(time);
    showDuePicture();
    m_observers.call(time);
    DispatchQueue::main().async([item = m_item] {
        NSNotificationCenter::defaultCenter().postNotificationName(AVPlayerItemDidPlayToEndTimeNotification,
                                                                   item);
    });
}

void PlayerEngine::setSink(std::shared_ptr<PictureSink> sink, CGSize size) {
    const bool isNew = sink != m_sink;
    m_sink = std::move(sink);
    m_sinkSize = size;
    if (!m_feed)
        return;
    if (!m_sink) {
        m_feed->stop();
        stopWaiting();
    } else if (isNew) {
        const CMTime time = currentTime();
        awaitPictures();
        runFrom(time);
    } else if (shownSize(*m_track, size) != m_feedStart.size) {
        requestPictures();
    }
}

void PlayerEngine::awaitPictures() {
    m_isWaiting = showsPictures();
    requestPictures();
}

void PlayerEngine::requestPictures() {
    if (!showsPictures() || std::exchange(m_isStartPending, true))
        return;
    DispatchQueue::main().async([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->startFeed();
    });
}

void PlayerEngine::startFeed() {
    m_isStartPending = false;
    if (!showsPictures())
        return;
    m_feedStart = {currentTime(), direction(), shownSize(*m_track, m_sinkSize)};
    m_feed->start(m_feedStart);
}

void PlayerEngine::showDuePicture() {
    if (!showsPictures() || m_isStartPending)
        return;
    const CMTime time = currentTime();
    const bool isBehind = CMTimeCompare(time, m_feedStart.position) < 0;
    const CMTime distance =
        isBehind ? CMTimeSubtract(m_feedStart.position, time) : CMTimeSubtract(time, m_feedStart.position);
    const std::optional<TimedPicture> picture = m_feed->take(distance);
    if (picture)
        m_sink->show({picture->pixels, picture->time, m_track->naturalSize(), m_track->preferredTransform()});
    if (picture || m_feed->isExhausted())
        stopWaiting();
}

void PlayerEngine::stopWaiting() {
    if (!std::exchange(m_isWaiting, false))
        return;
    runFrom(currentTime());
    completeSeek(true);
}

void PlayerEngine::completeSeek(bool finished) {
    // A completion may seek again.
    if (const Completion completion = std::exchange(m_seekCompletion, nullptr))
        completion(finished);
}

} // namespace anadrome::playback
