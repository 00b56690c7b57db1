#pragma once

#include <map>
#include <string>

namespace anadrome {

/// Wishes that only some ads know, by their names.
class GADExtras {
public:
    const std::map<std::string, std::string>& additionalParameters() const { return m_parameters; }
    void setAdditionalParameters(std::map<std::string, std::string> parameters) {
        m_parameters = std::move(parameters);
    }

private:
    std::map<std::string, std::string> m_parameters;
};

/// What is told about an ad that is wanted, besides the place that it is for.
class GADRequest {
public:
    const GADExtras& adNetworkExtras() const { return m_extras; }
    /// Replaces those registered before.
    void registerAdNetworkExtras(GADExtras extras) { m_extras = std::move(extras); }

private:
    GADExtras m_extras;
};

} // namespace anadrome
