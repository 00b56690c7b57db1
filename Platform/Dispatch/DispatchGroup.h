#pragma once

#include "Platform/Dispatch/DispatchQueue.h"

#include <chrono>
#include <memory>

namespace anadrome {

/// Counts pieces of work that end somewhere else, and tells when none is left. Copies share one group. Any
/// thread.
class DispatchGroup {
public:
    DispatchGroup();

    void enter() const;
    /// A leave without its enter is a fatal error.
    void leave() const;

    /// Runs the block once on the queue when the count is 0, also when it is so already, never inline.
    /// May be called several times; the group can be used again afterwards.
    void notify(const DispatchQueue& queue, DispatchQueue::Block block) const;

    /// Waits until the count is 0. False if the time ran out first.
    bool wait(std::chrono::milliseconds timeout) const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace anadrome
