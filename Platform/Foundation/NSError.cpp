#include "Platform/Foundation/NSError.h"

#include <cstring>

namespace anadrome {

NSError::NSError(std::string domain, long code, std::string localizedDescription,
                 std::optional<NSError> underlying)
    : m_domain(std::move(domain)), m_code(code), m_localizedDescription(std::move(localizedDescription)) {
    if (underlying)
        m_underlying = std::make_shared<const NSError>(std::move(*underlying));
}

NSError NSError::posix(int errnoValue) {
    char text[256] = "";
    return {NSPOSIXErrorDomain, errnoValue, ::strerror_r(errnoValue, text, sizeof text)};
}

std::string NSError::description() const {
    std::string text =
        "Error Domain=" + m_domain + " Code=" + std::to_string(m_code) + " \"" + m_localizedDescription + '"';
    if (m_underlying)
        text += " UserInfo={NSUnderlyingError=" + m_underlying->description() + '}';
    return text;
}

std::string describe(const std::optional<NSError>& error) {
    return error ? "Optional(" + error->description() + ')' : "nil";
}

} // namespace anadrome
