#pragma once

#include <functional>
#include <memory>

namespace anadrome::terminal {

/// Turns the signals that ask the program to end (interrupt, terminate, hang-up) into a call on the main
/// thread. Make it before any other thread starts: the signals are held back in every thread made after it.
class Interruption {
public:
    /// Gets the exit code that stands for the signal.
    explicit Interruption(std::function<void(int exitCode)> handler);
    ~Interruption();

private:
    class Notifier;
    std::unique_ptr<Notifier> m_notifier;
};

} // namespace anadrome::terminal
