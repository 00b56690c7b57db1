#pragma once

#include <QCoreApplication>
#include <chrono>
#include <thread>

namespace anadrome::testing_support {

/// Runs the main thread's event loop until the condition holds or the time is over; tells whether it holds.
template <typename Condition>
bool runEventLoopUntil(Condition holds, std::chrono::milliseconds patience = std::chrono::seconds(60)) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!holds() && std::chrono::steady_clock::now() < end) {
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return holds();
}

inline void runEventLoopFor(std::chrono::milliseconds time) {
    runEventLoopUntil([] { return false; }, time);
}

} // namespace anadrome::testing_support
