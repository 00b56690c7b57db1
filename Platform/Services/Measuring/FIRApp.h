#pragma once

namespace anadrome {

/// The ground that the measuring services stand on: crash reports, usage events, remote configuration.
class FIRApp {
public:
    /// To be called once, first of all at launch, on the main thread and with an application; a second call
    /// does nothing. Begins to write crash reports. Events are kept and sent if the deployment names a server
    /// for them; else nothing of them is written or sent. Never fails, and returns at once.
    static void configure();
};

} // namespace anadrome
