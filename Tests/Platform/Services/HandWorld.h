#pragma once

#include "Platform/Services/Measuring/ServiceWorld.h"
#include "Tests/Support/EventLoop.h"

#include <deque>
#include <memory>
#include <utility>

namespace anadrome {

/// A world whose time goes on, and whose server answers, when the test says so. Services may outlive it.
class HandWorld {
public:
    using Seconds = std::chrono::seconds;

    HandWorld() = default;
    HandWorld(const HandWorld&) = delete;
    HandWorld& operator=(const HandWorld&) = delete;
    ~HandWorld() {
        // They hold the services, which hold the state.
        m_state->requests.clear();
        m_state->timers.clear();
    }

    ServiceWorld world() const {
        return {.send = [s = m_state](auto request, auto done) { s->requests.emplace_back(request, done); },
                .now = [s = m_state] { return s->now; },
                .later = [s = m_state](Seconds delay,
                                       auto block) { s->timers.emplace_back(s->now + delay, block); }};
    }

    std::size_t requests() const { return m_state->requests.size(); }
    const HttpRequest& request() const { return m_state->requests.front().first; }
    bool awaitsAnswer() const {
        return testing_support::runEventLoopUntil([this] { return requests() > 0; });
    }
    void answer(const Result<std::string>& result) {
        const auto done = m_state->requests.front().second;
        m_state->requests.pop_front();
        done(result);
    }
    void answerStatus(long status) {
        answer(NSError(NSURLErrorDomain, NSURLErrorBadServerResponse, "Not what was asked for.",
                       NSError(HTTPStatusDomain, status, "")));
    }

    /// Of the one timer that is set, or gets set.
    Seconds wait() const {
        testing_support::runEventLoopUntil([this] { return !m_state->timers.empty(); });
        return floor<Seconds>(m_state->timers.at(0).first - m_state->now);
    }
    void advance(Seconds time) {
        m_state->now += time;
        while (!m_state->timers.empty() && m_state->timers.front().first <= m_state->now) {
            const auto block = m_state->timers.front().second;
            m_state->timers.pop_front();
            block();
        }
    }

private:
    using Time = std::chrono::system_clock::time_point;
    struct State {
        Time now{Seconds(1'795'411'717)};
        std::deque<std::pair<HttpRequest, HttpClient::Completion>> requests;
        std::deque<std::pair<Time, std::function<void()>>> timers;
    };
    const std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace anadrome
