#pragma once

#include "Tests/Support/ScratchFolder.h"

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace anadrome::testing_support {

/// The reference server of scripts/serve on a free port of this machine, as long as its owner lives. Throws
/// std::runtime_error if it can't be started.
class ReferenceServer {
public:
    ReferenceServer();
    ~ReferenceServer();

    /// "http://127.0.0.1:PORT" and the path, which begins with a slash: /ads, /consent, /analytics,
    /// /remote-config.
    std::string address(const std::string& path) const;

    /// As if the machine went from the network, and came back: the address and what was asked stay.
    void stop();
    void start();

    /// What was asked so far, oldest first: each one line of JSON with method, uri, status, headers in lower
    /// case and body. A request may be listed a moment after its answer has come.
    std::vector<std::string> requests() const;

private:
    const ScratchFolder m_folder;
    const std::uint16_t m_port;
    pid_t m_process = -1;
};

} // namespace anadrome::testing_support
