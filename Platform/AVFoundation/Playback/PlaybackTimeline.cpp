#include "Platform/AVFoundation/Playback/PlaybackTimeline.h"

#include <cmath>

namespace anadrome::playback {

void PlaybackTimeline::set(const CMTime& time, double rate, std::chrono::nanoseconds now) {
    m_time = time;
    m_rate = rate;
    m_since = now;
}

CMTime PlaybackTimeline::at(std::chrono::nanoseconds now) const {
    CMTime time = m_time;
    // Adding even nothing would round the time to nanoseconds.
    if (const auto gone = std::llround(static_cast<double>((now - m_since).count()) * m_rate))
        time = CMTimeAdd(time, CMTimeMake(gone, 1'000'000'000));
    return CMTimeMaximum(CMTimeMinimum(time, m_end), kCMTimeZero);
}

} // namespace anadrome::playback
