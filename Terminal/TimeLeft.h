#pragma once

#include <chrono>
#include <optional>

namespace anadrome::terminal {

/// Estimates how long a job still takes, by how fast its second half goes. The first is no measure of it: the
/// reading before the writing, or the reversal before the exports.
class TimeLeft {
public:
    using Clock = std::chrono::steady_clock;

    /// A fraction from 0 to 1, and when it was reached.
    void update(double fraction, Clock::time_point now);

    std::optional<std::chrono::seconds> estimate() const { return m_estimate; }

private:
    struct Point {
        double fraction;
        Clock::time_point time;
    };
    std::optional<Point> m_firstOfSecondHalf;
    std::optional<std::chrono::seconds> m_estimate;
};

} // namespace anadrome::terminal
