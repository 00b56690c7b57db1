#include "Platform/AVFoundation/Playback/PictureFeed.h"

#include "Platform/AVFoundation/Playback/PictureDecoder.h"

#include <malloc.h>

namespace anadrome::playback {

namespace {

/// Enough to bridge the time until the queue's thread comes round again.
constexpr std::size_t picturesAhead = 3;

/// Fifty pictures of 1080p, or two hundred in half its width and height.
constexpr std::size_t mostCachedBytes = 160 << 20;

} // namespace

PictureFeed::PictureFeed(AVAssetTrackRef track, std::function<void()> wake)
    : m_track(std::move(track)), m_wake(std::move(wake)), m_queue(DispatchQueue::serial("playback")) {}

PictureFeed::~PictureFeed() = default;

void PictureFeed::start(const FeedStart& start) {
    const std::lock_guard lock(m_mutex);
    m_wish = {m_wish.generation + 1, false, start, kCMTimeZero};
    m_ready.clear();
    m_isExhausted = false;
    m_isAwaited = true;
    schedule();
}

void PictureFeed::stop() {
    const std::lock_guard lock(m_mutex);
    m_wish = {m_wish.generation + 1, true, {}, kCMTimeZero};
    m_ready.clear();
    m_isAwaited = false;
    schedule();
}

std::optional<TimedPicture> PictureFeed::take(const CMTime& distance) {
    const std::lock_guard lock(m_mutex);
    m_wish.distance = distance;
    std::optional<TimedPicture> picture;
    while (!m_ready.empty() && CMTimeCompare(m_ready.front().due, distance) <= 0) {
        picture = std::move(m_ready.front());
        m_ready.pop_front();
    }
    m_isAwaited = m_ready.empty();
    if (!m_wish.isStopped && !m_isExhausted && m_ready.size() < picturesAhead)
        schedule();
    return picture;
}

bool PictureFeed::isExhausted() const {
    const std::lock_guard lock(m_mutex);
    return m_isExhausted && m_ready.empty();
}

void PictureFeed::schedule() {
    if (std::exchange(m_isScheduled, true))
        return;
    m_queue.async([self = shared_from_this()] { self->run(); });
}

void PictureFeed::run() {
    while (true) {
        std::unique_lock lock(m_mutex);
        const Wish wish = m_wish;
        lock.unlock();
        if (runOnce(wish))
            continue;
        lock.lock();
        const bool isSatisfied = wish.isStopped || m_isExhausted || m_ready.size() >= picturesAhead;
        if (m_wish.generation == wish.generation && isSatisfied) {
            m_isScheduled = false;
            return;
        }
    }
}

bool PictureFeed::runOnce(const Wish& wish) {
    if (wish.isStopped) {
        release();
        return false;
    }
    follow(wish);
    std::unique_lock lock(m_mutex);
    const bool hasRoom = m_ready.size() < picturesAhead;
    lock.unlock();
    if (m_source && hasRoom)
        if (std::optional<TimedPicture> picture = m_source->take(wish.distance))
            return deliver(wish.generation, std::move(*picture));
    if (m_source && m_source->work(wish.distance))
        return true;
    lock.lock();
    if (m_wish.generation == wish.generation && (!m_source || m_source->isAtEnd())) {
        m_isExhausted = true;
        wakeIfAwaited();
    }
    return false;
}

void PictureFeed::follow(const Wish& wish) {
    if (std::exchange(m_generation, wish.generation) == wish.generation)
        return;
    m_source.reset();
    if (!m_decoder)
        if (Result<std::unique_ptr<PictureDecoder>> opened = PictureDecoder::open(m_track))
            m_decoder = std::move(*opened);
    if (!m_decoder)
        return;
    m_decoder->setSize(wish.start.size);
    m_source = makePictureSource(*m_decoder, wish.start.position, wish.start.direction, mostCachedBytes);
}

void PictureFeed::release() {
    if (!m_decoder)
        return;
    m_source.reset();
    m_decoder.reset();
    // The pictures leave much memory free but scattered.
    ::malloc_trim(0);
}

bool PictureFeed::deliver(int generation, TimedPicture picture) {
    const std::lock_guard lock(m_mutex);
    if (m_wish.generation == generation) {
        m_ready.push_back(std::move(picture));
        wakeIfAwaited();
    }
    return true;
}

void PictureFeed::wakeIfAwaited() {
    if (std::exchange(m_isAwaited, false))
        DispatchQueue::main().async(m_wake);
}

} // namespace anadrome::playback
