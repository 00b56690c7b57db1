#include "Platform/Services/Measuring/ServiceWorld.h"

#include "Platform/Foundation/NSTimer.h"

#include <utility>

namespace anadrome {

ServiceWorld ServiceWorld::real() {
    return {
        .send = HttpClient::send,
        .now = std::chrono::system_clock::now,
        .later =
            [](std::chrono::seconds delay, std::function<void()> block) {
                NSTimer::scheduledTimerWithTimeInterval(static_cast<double>(delay.count()), false,
                                                        [block = std::move(block)](NSTimer&) { block(); });
            },
    };
}

} // namespace anadrome
