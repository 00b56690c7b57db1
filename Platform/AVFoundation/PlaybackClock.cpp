#include "Platform/AVFoundation/PlaybackClock.h"

#include "Platform/Foundation/NSTimer.h"

namespace anadrome {

namespace {

constexpr double ticksPerSecond = 60;

class SteadyClock final : public PlaybackClock {
public:
    std::chrono::nanoseconds now() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }

    std::shared_ptr<void> tick(std::function<void()> block) override {
        const auto timer = NSTimer::scheduledTimerWithTimeInterval(
            1 / ticksPerSecond, true, [block = std::move(block)](NSTimer&) { block(); });
        return {timer.get(), [timer](void*) { timer->invalidate(); }};
    }
};

} // namespace

std::shared_ptr<PlaybackClock> steadyPlaybackClock() {
    return std::make_shared<SteadyClock>();
}

} // namespace anadrome
