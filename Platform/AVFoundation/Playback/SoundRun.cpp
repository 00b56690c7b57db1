#include "Platform/AVFoundation/Playback/SoundRun.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace anadrome::playback {

namespace {

/// How long the first sound is waited for, and how long a device may stand still.
constexpr std::chrono::milliseconds patience(500);

/// What the device tells is older than the look at it by up to a tick: no reason to slow down.
constexpr double tolerance = 0.02;

/// The time stands while it is so far ahead of the sound, and slows down before.
constexpr double standsAhead = 0.25;

} // namespace

std::unique_ptr<SoundRun> SoundRun::start(const AVAssetTrackRef& track, const CMTimeRange& range,
                                          std::chrono::nanoseconds now) {
    std::unique_ptr<SoundSink> sink = openSoundSink();
    if (!sink)
        return nullptr;
    return std::unique_ptr<SoundRun>(new SoundRun(std::move(sink), track, range, now));
}

SoundRun::SoundRun(std::unique_ptr<SoundSink> sink, const AVAssetTrackRef& track, const CMTimeRange& range,
                   std::chrono::nanoseconds now)
    : m_sink(std::move(sink)), m_sampleRate(m_sink->sampleRate()), m_position(range.start),
      m_feed(SoundFeed::start(track, range, m_sampleRate)), m_movedAt(now), m_startedAt(now) {}

SoundRun::~SoundRun() {
    m_feed->stop();
}

CMTime SoundRun::timeOf(std::int64_t frames) const {
    return CMTimeAdd(m_position, CMTimeMake(frames, m_sampleRate));
}

SoundRun::Course SoundRun::follow(const CMTime& time, std::chrono::nanoseconds now) {
    const Course course = courseAt(time, now);
    if (!isDry() || skipTo(course.time))
        fillSink();
    return course;
}

SoundRun::Course SoundRun::courseAt(const CMTime& time, std::chrono::nanoseconds now) {
    const std::int64_t heard = std::min(m_sink->heardFrames(), m_written);
    const bool isNews = heard > std::exchange(m_heard, heard);
    if (isNews || isDry())
        m_movedAt = now;
    if (!isNews) {
        const bool isAwaited = m_heard == 0 && now - m_startedAt < patience;
        if (!isAwaited && (m_heard == 0 || isDry()))
            m_rate = 1;
        return {time, m_rate};
    }
    const CMTime sounding = timeOf(m_heard + m_skipped);
    const double ahead = CMTimeGetSeconds(CMTimeSubtract(time, sounding));
    m_rate = ahead <= tolerance ? 1 : std::max(1 - ahead / standsAhead, 0.0);
    return {ahead < 0 ? sounding : time, m_rate};
}

bool SoundRun::isStuck(std::chrono::nanoseconds now) const {
    return now - m_movedAt >= patience;
}

void SoundRun::fillSink() {
    for (std::span<const float> samples = ready(); !samples.empty(); samples = ready()) {
        const std::size_t taken = std::min(m_sink->write(samples), samples.size() / 2);
        m_used += 2 * taken;
        m_written += static_cast<std::int64_t>(taken);
        if (2 * taken < samples.size())
            return;
    }
}

bool SoundRun::skipTo(const CMTime& time) {
    const double late = CMTimeGetSeconds(CMTimeSubtract(time, timeOf(m_written + m_skipped)));
    auto frames = late > tolerance ? static_cast<std::size_t>(std::lround(late * m_sampleRate)) : 0;
    while (frames > 0 && !ready().empty()) {
        const std::size_t count = std::min(frames, ready().size() / 2);
        m_used += 2 * count;
        m_skipped += static_cast<std::int64_t>(count);
        frames -= count;
    }
    return frames == 0;
}

std::span<const float> SoundRun::ready() {
    if (m_used == m_block.size()) {
        m_block = m_feed->take();
        m_used = 0;
        for (float& sample : m_block)
            sample *= m_volume;
    }
    return std::span(m_block).subspan(m_used);
}

} // namespace anadrome::playback
