#include "Platform/Foundation/NSTimer.h"
#include "Tests/Support/EventLoop.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

using namespace anadrome;
using testing_support::runEventLoopFor;
using testing_support::runEventLoopUntil;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

TEST(NSTimer, FiresOnceOrAgainAndAgainAsAskedAtAnyInterval) {
    for (const double interval : {0.002, 0.0001, 0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        int single = 0;
        int repeated = 0;
        const auto once =
            NSTimer::scheduledTimerWithTimeInterval(interval, false, [&](NSTimer&) { ++single; });
        // Nobody holds this one but the event loop.
        NSTimer::scheduledTimerWithTimeInterval(interval, true, [&](NSTimer& timer) {
            if (++repeated == 5)
                timer.invalidate();
        });
        EXPECT_EQ(single, 0);
        EXPECT_TRUE(runEventLoopUntil([&] { return single == 1 && repeated == 5; }));
        runEventLoopFor(10ms);
        EXPECT_EQ(single, 1);
        EXPECT_EQ(repeated, 5);
        EXPECT_FALSE(once->isValid());
    }
}

TEST(NSTimer, DropsMissedTimesAndStaysOnItsGrid) {
    constexpr auto interval = 60ms;
    bool isOnGrid = false;
    // A busy machine may be late once more, but a timer without a grid never comes early after a late call.
    for (int attempt = 0; attempt < 20 && !isOnGrid; ++attempt) {
        std::vector<Clock::time_point> calls;
        const auto timer = NSTimer::scheduledTimerWithTimeInterval(
            0.06, true, [&](NSTimer&) { calls.push_back(Clock::now()); });
        std::this_thread::sleep_for(3 * interval + interval / 2);
        EXPECT_TRUE(runEventLoopUntil([&] { return !calls.empty(); }));
        EXPECT_EQ(calls.size(), 1u);
        EXPECT_TRUE(runEventLoopUntil([&] { return calls.size() == 2; }));
        isOnGrid = calls[1] - calls[0] < interval - 5ms && calls[1] - calls[0] > 5ms;
        timer->invalidate();
    }
    EXPECT_TRUE(isOnGrid);
}

TEST(NSTimer, IsInvalidatedByAnotherThreadAfterTheCallThatHasBegun) {
    for (int round = 0; round < 50; ++round) {
        int calls = 0; // Of the main thread alone.
        std::atomic<bool> hasBegun = false;
        const auto timer = NSTimer::scheduledTimerWithTimeInterval(0.0001, true, [&](NSTimer&) {
            ++calls;
            hasBegun = true;
        });
        std::atomic<bool> isInvalid = false;
        std::jthread other([&] {
            while (!hasBegun)
                std::this_thread::yield();
            timer->invalidate();
            isInvalid = true;
        });
        EXPECT_TRUE(runEventLoopUntil([&] { return isInvalid.load(); }));
        const int counted = calls;
        runEventLoopFor(2ms);
        EXPECT_EQ(calls, counted);
        EXPECT_FALSE(timer->isValid());
    }
}
