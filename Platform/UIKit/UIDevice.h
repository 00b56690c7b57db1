#pragma once

#include <string>

namespace anadrome {

/// The machine that the program runs on.
class UIDevice {
public:
    static const UIDevice& currentDevice();

    /// What its owner calls it.
    std::string name() const;
    /// The operating system, with its version.
    std::string systemVersion() const;

private:
    UIDevice() = default;
};

} // namespace anadrome
