#include "Terminal/TimeLeft.h"

namespace anadrome::terminal {

void TimeLeft::update(double fraction, Clock::time_point now) {
    using Seconds = std::chrono::duration<double>;
    if (fraction < 0.5)
        return;
    if (!m_firstOfSecondHalf || fraction < m_firstOfSecondHalf->fraction) {
        m_firstOfSecondHalf = {fraction, now};
        return;
    }
    const double progressed = fraction - m_firstOfSecondHalf->fraction;
    const Seconds elapsed = now - m_firstOfSecondHalf->time;
    // The encoder swallows the first pictures faster than it can work.
    if (progressed < 0.01 || elapsed < Seconds(1))
        return;
    m_estimate = std::chrono::ceil<std::chrono::seconds>(elapsed * ((1 - fraction) / progressed));
}

} // namespace anadrome::terminal
