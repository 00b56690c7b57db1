#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace anadrome::libav {

/// Hands values from one thread to another, at most `capacity` at a time: the giver waits while it is full,
/// the taker while it is empty. Closing it from either side wakes both.
template <typename T>
class BoundedQueue {
public:
    explicit BoundedQueue(std::size_t capacity) : m_capacity(capacity) {}

    /// False, with the value dropped, once the queue is closed.
    bool push(T value) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_closed || m_values.size() < m_capacity; });
        if (m_closed)
            return false;
        m_values.push_back(std::move(value));
        m_changed.notify_all();
        return true;
    }

    /// Empty once the queue is closed and all values are taken.
    std::optional<T> pop() {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_closed || !m_values.empty(); });
        if (m_values.empty())
            return std::nullopt;
        T value = std::move(m_values.front());
        m_values.pop_front();
        m_changed.notify_all();
        return value;
    }

    /// No more values come in; those inside can still be taken.
    void close() {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        m_changed.notify_all();
    }

    /// close(), and the values inside are dropped.
    void abandon() {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        m_values.clear();
        m_changed.notify_all();
    }

private:
    const std::size_t m_capacity;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<T> m_values;
    bool m_closed = false;
};

} // namespace anadrome::libav
