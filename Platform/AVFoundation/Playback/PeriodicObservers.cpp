#include "Platform/AVFoundation/Playback/PeriodicObservers.h"

#include <atomic>
#include <cmath>

namespace anadrome::playback {

struct PeriodicObservers::Observer {
    const double interval;
    const DispatchQueue queue;
    const Block block;
    /// The interval, counted from the item's beginning, in which it was last called.
    double place = -1;
    std::atomic<bool> isRemoved = false;

    double placeOf(const CMTime& time) const {
        // A time that was rounded just below a multiple counts as that multiple.
        return std::floor(CMTimeGetSeconds(time) / interval + 1e-6);
    }
};

namespace {

void callOne(const PeriodicObservers::Token& observer, const CMTime& time) {
    observer->place = observer->placeOf(time);
    observer->queue.async([observer, time] {
        if (!observer->isRemoved)
            observer->block(time);
    });
}

} // namespace

PeriodicObservers::Token PeriodicObservers::add(const CMTime& interval, DispatchQueue queue, Block block) {
    const double seconds = CMTimeGetSeconds(interval);
    const Token token(new Observer{seconds, std::move(queue), std::move(block)});
    m_observers.push_back(token);
    return token;
}

void PeriodicObservers::remove(const Token& token) {
    if (token)
        token->isRemoved = true;
    std::erase(m_observers, token);
}

void PeriodicObservers::passed(const CMTime& time) {
    for (const Token& observer : m_observers)
        if (observer->placeOf(time) != observer->place)
            callOne(observer, time);
}

void PeriodicObservers::call(const CMTime& time) {
    for (const Token& observer : m_observers)
        callOne(observer, time);
}

} // namespace anadrome::playback
