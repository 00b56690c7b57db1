#include "Platform/Foundation/NSTimer.h"

#include "Platform/Dispatch/MainThread.h"
#include "Platform/Foundation/Print.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

namespace anadrome {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double shortestInterval = 0.0001;
/// More than any program runs, and still far from the clock's limit.
constexpr double longestInterval = 1e9;

void requireMainThread() {
    if (!isMainThread())
        fatalError("NSTimer: used off the main thread, or without an application");
}

} // namespace

/// Times at one distance from each other.
class NSTimer::Grid {
public:
    explicit Grid(double seconds)
        : m_interval(std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(
              seconds > 0 ? std::clamp(seconds, shortestInterval, longestInterval) : shortestInterval))),
          m_next(Clock::now() + m_interval) {}

    bool isDue() const { return Clock::now() >= m_next; }

    /// Moves on to the first time that is still to come.
    void advance() { m_next += ((Clock::now() - m_next) / m_interval + 1) * m_interval; }

    /// Rounded up, so that a call is never early; no more than the event loop can count.
    std::chrono::milliseconds untilNext() const {
        using namespace std::chrono_literals;
        return std::clamp(std::chrono::ceil<std::chrono::milliseconds>(m_next - Clock::now()), 1ms,
                          std::chrono::milliseconds(1h));
    }

private:
    Clock::duration m_interval;
    Clock::time_point m_next;
};

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, bool repeats, Block block) {
    requireMainThread();
    const std::shared_ptr<NSTimer> timer(new NSTimer(repeats, std::move(block)));
    timer->waitFor(Grid(interval));
    return timer;
}

NSTimer::NSTimer(bool repeats, Block block)
    : m_repeats(repeats), m_block(std::make_shared<const Block>(std::move(block))) {}

/// One wait of the event loop at a time. So an invalid timer has nothing to stop, on whatever thread it
/// became so: its last wait finds it invalid.
void NSTimer::waitFor(Grid grid) {
    QTimer::singleShot(grid.untilNext(), Qt::PreciseTimer, QCoreApplication::instance(),
                       [self = shared_from_this(), grid]() mutable {
                           if (grid.isDue()) {
                               self->fire();
                               grid.advance();
                           }
                           if (self->isValid())
                               self->waitFor(grid);
                       });
}

void NSTimer::fire() {
    requireMainThread();
    const auto self = shared_from_this();
    call();
    if (!m_repeats)
        invalidate();
}

void NSTimer::call() {
    std::unique_lock lock(m_mutex);
    const auto block = m_block;
    lock.unlock();
    if (block)
        (*block)(*this);
}

void NSTimer::invalidate() {
    // Destroyed after the lock: what the block holds may itself use the timer.
    std::shared_ptr<const Block> released;
    std::lock_guard lock(m_mutex);
    released.swap(m_block);
}

bool NSTimer::isValid() const {
    std::lock_guard lock(m_mutex);
    return m_block != nullptr;
}

} // namespace anadrome
