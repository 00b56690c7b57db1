#pragma once

#include <stop_token>

namespace anadrome {

/// The right to use the frame store, which all runs share and only one at a time may touch. A run that was
/// cancelled may still be at its last frame when the next begins. Any thread.
class FrameStoreOwner {
public:
    /// Waits until no other run has the store. False if the stop came first.
    static bool take(std::stop_token stop);
    /// Once for each successful take().
    static void release();
};

} // namespace anadrome
