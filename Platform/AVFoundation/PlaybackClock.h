#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace anadrome {

/// What a player's time runs by, and when it looks at it. Main thread only.
class PlaybackClock {
public:
    virtual ~PlaybackClock() = default;

    /// Never falls; counted from any moment.
    virtual std::chrono::nanoseconds now() const = 0;

    /// Calls the block again and again, about as often as a screen shows pictures, until the result is let
    /// go. Never calls it inline.
    virtual std::shared_ptr<void> tick(std::function<void()> block) = 0;
};

/// The system's steady clock, ticking sixty times a second by the main event loop.
std::shared_ptr<PlaybackClock> steadyPlaybackClock();

} // namespace anadrome
