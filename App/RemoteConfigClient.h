#pragma once

#include <memory>

namespace anadrome {

class FIRRemoteConfig;

/// Holds the values that a server sets for the program. Main thread only.
class RemoteConfigClient {
public:
    /// Made at first use, which must come after FIRApp::configure().
    static RemoteConfigClient& shared();

    const std::shared_ptr<FIRRemoteConfig>& remoteConfig() const { return m_remoteConfig; }

private:
    RemoteConfigClient();

    const std::shared_ptr<FIRRemoteConfig> m_remoteConfig;
};

} // namespace anadrome
