#pragma once

#include <string>

namespace anadrome {

/// Facts about this process. Any thread.
class NSProcessInfo {
public:
    static NSProcessInfo& processInfo();

    /// Another string at every call, on every machine: a UUID, the process number and a counter, joined by
    /// "-". Safe as a file name.
    std::string globallyUniqueString();

private:
    NSProcessInfo() = default;
};

} // namespace anadrome
