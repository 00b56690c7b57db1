#pragma once

#include <memory>
#include <string>

namespace anadrome {

class UIImage;
using UIImageRef = std::shared_ptr<const UIImage>;

/// One of the program's symbols, by name; a front end has the drawing. Any thread.
class UIImage {
public:
    /// Null if there is no such symbol.
    static UIImageRef systemImageNamed(const std::string& name);

    const std::string& systemName() const { return m_systemName; }

private:
    explicit UIImage(std::string systemName) : m_systemName(std::move(systemName)) {}

    const std::string m_systemName;
};

} // namespace anadrome
