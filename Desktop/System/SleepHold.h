#pragma once

#include <memory>

namespace anadrome::desktop {

/// Keeps the computer awake as long as it lives, if the desktop or the system lets it: asks the desktop's
/// portal, else the login manager. The hold goes with the program too, however that ends. Main thread only.
class SleepHold {
public:
    SleepHold();

private:
    struct Grip;
    static void askLoginManager(std::shared_ptr<Grip> grip);

    /// Shared with the answers that are still to come: what comes too late is let go at once.
    const std::shared_ptr<Grip> m_grip;
};

} // namespace anadrome::desktop
