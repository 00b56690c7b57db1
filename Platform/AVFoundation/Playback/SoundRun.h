#pragma once

#include "Platform/AVFoundation/Playback/SoundFeed.h"
#include "Platform/AVFoundation/SoundSink.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

namespace anadrome::playback {

/// The sound of an item from a position to the item's end, on a device of its own, and the time that it
/// leads. Ends with this object. Main thread only.
class SoundRun {
public:
    /// Where play stands, and how fast it goes on by the wall clock until the next look.
    struct Course {
        CMTime time;
        double rate = 0;
    };

    /// Null if there is no device: then the wall clock leads.
    static std::unique_ptr<SoundRun> start(const AVAssetTrackRef& track, const CMTimeRange& range,
                                           std::chrono::nanoseconds now);
    ~SoundRun();
    SoundRun(const SoundRun&) = delete;
    SoundRun& operator=(const SoundRun&) = delete;

    /// Corrects the time by what has been heard, and gives the device what it has room for. To be called at
    /// every tick. The time never goes back; it stands until the first sound and while it is far ahead of the
    /// sound, but not for long.
    Course follow(const CMTime& time, std::chrono::nanoseconds now);

    /// Whether the device has stopped playing what it was given.
    bool isStuck(std::chrono::nanoseconds now) const;

    /// From 0 to 1, for the sound that the device hasn't got yet.
    void setVolume(float volume) { m_volume = volume; }

private:
    SoundRun(std::unique_ptr<SoundSink> sink, const AVAssetTrackRef& track, const CMTimeRange& range,
             std::chrono::nanoseconds now);

    CMTime timeOf(std::int64_t frames) const;
    bool isDry() const { return m_heard == m_written; }
    Course courseAt(const CMTime& time, std::chrono::nanoseconds now);
    void fillSink();
    /// Leaves out what should have been heard already, the time having gone on without it. False while more
    /// of that is to come.
    bool skipTo(const CMTime& time);
    /// Sound that is ready and not used up. Empty if there is none.
    std::span<const float> ready();

    const std::unique_ptr<SoundSink> m_sink;
    const int m_sampleRate;
    const CMTime m_position;
    const std::shared_ptr<SoundFeed> m_feed;

    /// A stretch of decoded sound, and how much of it is used up.
    std::vector<float> m_block;
    std::size_t m_used = 0;

    std::int64_t m_written = 0;
    std::int64_t m_heard = 0;
    /// Frames that came too late to be played.
    std::int64_t m_skipped = 0;
    double m_rate = 0;
    float m_volume = 1;
    /// When more was heard for the last time, or the device had nothing to play.
    std::chrono::nanoseconds m_movedAt;
    const std::chrono::nanoseconds m_startedAt;
};

} // namespace anadrome::playback
