#pragma once

#include "Platform/Services/Ads/GADAdSource.h"

#include <string>
#include <utility>
#include <vector>

namespace anadrome {

/// The deployment's ad server, asked over HTTP; docs/deployment.md tells what it is told and what it answers.
/// Without one nobody is asked. Every failure is an error of GADErrorDomain. Main thread only.
class GADAdServer final : public GADAdSource {
public:
    /// The file with this machine's identifier, which is compared with the test devices' and never sent.
    explicit GADAdServer(std::string machineIdentifierFile = "/etc/machine-id")
        : m_machineIdentifierFile(std::move(machineIdentifierFile)) {}

    void fetch(const GADAdPlace& place, const GADRequest& request, Completion completion) override;
    bool isDeployed() const override;

private:
    using Parameters = std::vector<std::pair<std::string, std::string>>;

    Parameters parameters(const GADAdPlace& place, const GADRequest& request) const;
    bool isTestDevice() const;

    const std::string m_machineIdentifierFile;
};

} // namespace anadrome
