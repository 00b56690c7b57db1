#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace anadrome::testing_support {

/// Sets an environment variable as long as it lives.
class Environment {
public:
    Environment(const std::string& name, const std::string& value) : m_name(name) {
        if (const char* former = std::getenv(name.c_str()))
            m_former = former;
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() { m_former ? ::setenv(m_name.c_str(), m_former->c_str(), 1) : ::unsetenv(m_name.c_str()); }

private:
    const std::string m_name;
    std::optional<std::string> m_former;
};

} // namespace anadrome::testing_support
