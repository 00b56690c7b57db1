#pragma once

#include <functional>
#include <string>
#include <vector>

namespace anadrome {

/// What holds for every ad that is asked for. Main thread only.
class GADRequestConfiguration {
public:
    /// The machines that get test ads. A machine is one of them if it finds itself in the list; its own
    /// identifier goes nowhere.
    const std::vector<std::string>& testDeviceIdentifiers() const { return m_testDeviceIdentifiers; }
    void setTestDeviceIdentifiers(std::vector<std::string> identifiers) {
        m_testDeviceIdentifiers = std::move(identifiers);
    }

private:
    std::vector<std::string> m_testDeviceIdentifiers;
};

/// The ad network as a whole. Main thread only.
class GADMobileAds {
public:
    static GADMobileAds& sharedInstance();

    GADRequestConfiguration& requestConfiguration() { return m_requestConfiguration; }

    /// Makes the ad network ready, which can't fail and asks nobody. Completes once, on the main queue, never
    /// before the call returns.
    void startWithCompletionHandler(std::function<void()> completion);

private:
    GADMobileAds() = default;

    GADRequestConfiguration m_requestConfiguration;
};

} // namespace anadrome
