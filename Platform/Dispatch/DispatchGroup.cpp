#include "Platform/Dispatch/DispatchGroup.h"

#include "Platform/Foundation/Print.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

namespace anadrome {

struct DispatchGroup::State {
    struct Notification {
        DispatchQueue queue;
        DispatchQueue::Block block;
    };

    std::mutex mutex;
    std::condition_variable emptied;
    std::uint64_t count = 0;
    /// How often the count has come down to 0. Tells a waiter so even if the group is in use again when it
    /// wakes.
    std::uint64_t rounds = 0;
    std::vector<Notification> notifications;
};

DispatchGroup::DispatchGroup() : m_state(std::make_shared<State>()) {}

void DispatchGroup::enter() const {
    std::lock_guard lock(m_state->mutex);
    ++m_state->count;
}

void DispatchGroup::leave() const {
    std::vector<State::Notification> due;
    {
        std::lock_guard lock(m_state->mutex);
        if (m_state->count == 0)
            fatalError("A dispatch group was left more often than entered.");
        if (--m_state->count > 0)
            return;
        ++m_state->rounds;
        due.swap(m_state->notifications);
        m_state->emptied.notify_all();
    }
    for (auto& [queue, block] : due)
        queue.async(std::move(block));
}

void DispatchGroup::notify(const DispatchQueue& queue, DispatchQueue::Block block) const {
    {
        std::lock_guard lock(m_state->mutex);
        if (m_state->count > 0) {
            m_state->notifications.push_back({queue, std::move(block)});
            return;
        }
    }
    queue.async(std::move(block));
}

bool DispatchGroup::wait(std::chrono::milliseconds timeout) const {
    // A time-out near the type's limit would overflow the clock.
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24 * 365);
    std::unique_lock lock(m_state->mutex);
    const auto isOver = [&, round = m_state->rounds] {
        return m_state->count == 0 || m_state->rounds != round;
    };
    return m_state->emptied.wait_for(lock, std::min(timeout, longest), isOver);
}

} // namespace anadrome
