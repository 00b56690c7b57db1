#include "Platform/AVFoundation/Playback/SoundFeed.h"

#include <algorithm>
#include <utility>

namespace anadrome::playback {

namespace {

constexpr std::size_t blocksInASecond = 50;
constexpr std::size_t blocksInHalfASecond = blocksInASecond / 2;

} // namespace

std::shared_ptr<SoundFeed> SoundFeed::start(AVAssetTrackRef track, const CMTimeRange& range, int sampleRate) {
    std::shared_ptr<SoundFeed> feed(new SoundFeed(std::move(track), range, sampleRate));
    const std::lock_guard lock(feed->m_mutex);
    feed->schedule();
    return feed;
}

SoundFeed::SoundFeed(AVAssetTrackRef track, const CMTimeRange& range, int sampleRate)
    : m_queue(DispatchQueue::serial("sound")),
      m_blockFrames(static_cast<std::size_t>(sampleRate) / blocksInASecond),
      m_blocksAhead(blocksInHalfASecond),
      m_framesLeft(
          CMTimeConvertScale(range.duration, sampleRate, CMTimeRoundingMethod::RoundAwayFromZero).value),
      m_sound(std::make_unique<render::SegmentSound>(
          AVAssetTrackSegment{std::move(track), {range, {kCMTimeZero, range.duration}}}, sampleRate)) {}

void SoundFeed::stop() {
    const std::lock_guard lock(m_mutex);
    m_isStopped = true;
    m_ready.clear();
}

std::vector<float> SoundFeed::take() {
    const std::lock_guard lock(m_mutex);
    if (m_ready.empty())
        return {};
    std::vector<float> block = std::move(m_ready.front());
    m_ready.pop_front();
    schedule();
    return block;
}

void SoundFeed::schedule() {
    if (wantsMore() && !std::exchange(m_isScheduled, true))
        m_queue.async([self = shared_from_this()] { self->fill(); });
}

void SoundFeed::fill() {
    std::unique_lock lock(m_mutex);
    while (wantsMore()) {
        const auto left = static_cast<std::size_t>(m_framesLeft);
        std::vector<float> block(2 * std::min(left, m_blockFrames));
        lock.unlock();
        decode(block);
        lock.lock();
        m_framesLeft -= static_cast<std::int64_t>(block.size() / 2);
        if (!m_isStopped)
            m_ready.push_back(std::move(block));
    }
    m_isScheduled = false;
}

void SoundFeed::decode(std::vector<float>& block) {
    if (m_sound && m_sound->addNext(block))
        m_sound.reset();
}

} // namespace anadrome::playback
