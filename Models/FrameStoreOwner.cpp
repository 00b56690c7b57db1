#include "Models/FrameStoreOwner.h"

#include <condition_variable>
#include <mutex>

namespace anadrome {

namespace {

struct Gate {
    std::mutex mutex;
    std::condition_variable_any changed;
    bool isTaken = false;
};

Gate& gate() {
    // Never destroyed: a cancelled run may outlive main().
    static Gate& gate = *new Gate;
    return gate;
}

} // namespace

bool FrameStoreOwner::take(std::stop_token stop) {
    std::unique_lock lock(gate().mutex);
    if (!gate().changed.wait(lock, std::move(stop), [] { return !gate().isTaken; }))
        return false;
    gate().isTaken = true;
    return true;
}

void FrameStoreOwner::release() {
    const std::lock_guard lock(gate().mutex);
    gate().isTaken = false;
    gate().changed.notify_one();
}

} // namespace anadrome
