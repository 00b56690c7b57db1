#pragma once

#include "Platform/CoreMedia/CMTime.h"

#include <chrono>

namespace anadrome::playback {

/// Where play stands, as a line through a moment of the clock: exact where it begins.
class PlaybackTimeline {
public:
    void set(const CMTime& time, double rate, std::chrono::nanoseconds now);

    /// Between zero and the end, if there is one.
    CMTime at(std::chrono::nanoseconds now) const;

    void setEnd(const CMTime& end) { m_end = end; }

private:
    CMTime m_time = kCMTimeZero;
    double m_rate = 0;
    std::chrono::nanoseconds m_since{0};
    CMTime m_end = kCMTimePositiveInfinity;
};

} // namespace anadrome::playback
