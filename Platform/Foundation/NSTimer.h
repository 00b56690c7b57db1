#pragma once

#include <functional>
#include <memory>
#include <mutex>

namespace anadrome {

/// Calls a block on the main thread's event loop once, or again and again, to the millisecond and never
/// early.
///
/// The times of a repeating timer lie on a grid that begins when it is scheduled. If the loop gets to a call
/// late, also because the call before took long, it makes one call for all the times that passed, and the
/// next at the next time on the grid. The event loop keeps a scheduled timer alive until it is invalid.
class NSTimer : public std::enable_shared_from_this<NSTimer> {
public:
    using Block = std::function<void(NSTimer& timer)>;

    /// The first call comes after the interval, given in seconds; one that isn't above 0 counts as 0.0001.
    /// Main thread only, and there must be a QCoreApplication; anything else is a fatal error.
    static std::shared_ptr<NSTimer> scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                                   Block block);

    /// Calls the block now, if the timer is valid. A repeating timer keeps its times, another is invalid
    /// afterwards. Main thread only; another is a fatal error.
    void fire();

    /// Ends the timer for good and releases the block. Any thread: called on the main thread, no call begins
    /// afterwards; called on another, a call that has begun runs to its end and keeps the block until then.
    void invalidate();

    /// Any thread.
    bool isValid() const;

private:
    class Grid;

    NSTimer(bool repeats, Block block);
    void waitFor(Grid grid);
    void call();

    const bool m_repeats;
    mutable std::mutex m_mutex;
    /// Null when invalid.
    std::shared_ptr<const Block> m_block;
};

} // namespace anadrome
