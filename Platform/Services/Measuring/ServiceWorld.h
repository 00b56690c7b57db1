#pragma once

#include "Platform/Services/Http/HttpClient.h"

#include <chrono>
#include <functional>

namespace anadrome {

/// What a service has of the world outside; tests put a world of their own in its place. Main thread only.
struct ServiceWorld {
    /// As HttpClient::send.
    std::function<void(HttpRequest request, HttpClient::Completion completion)> send;
    std::function<std::chrono::system_clock::time_point()> now;
    /// Calls the block once, on the main thread, after the delay and never inline.
    std::function<void(std::chrono::seconds delay, std::function<void()> block)> later;

    static ServiceWorld real();
};

} // namespace anadrome
