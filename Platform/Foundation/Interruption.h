#pragma once

#include <functional>
#include <memory>

namespace anadrome {

/// Turns the signals that ask the program to end (interrupt, terminate, hang-up) into a call on the main
/// thread, whose event loop is to run. Those that whoever started the program has it ignore stay ignored.
/// Once the call is made, further signals don't disturb what it does. One at a time, after the application
/// object.
///
/// Programs that are started meanwhile get their signals as ever: nothing of this is inherited.
class Interruption {
public:
    /// Gets the exit code that stands for the signal.
    explicit Interruption(std::function<void(int exitCode)> handler);
    ~Interruption();

private:
    class Notifier;
    std::unique_ptr<Notifier> m_notifier;
};

} // namespace anadrome
