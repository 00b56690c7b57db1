#pragma once

#include <memory>
#include <optional>
#include <string>

namespace anadrome {

inline constexpr const char* NSCocoaErrorDomain = "NSCocoaErrorDomain";
inline constexpr const char* NSPOSIXErrorDomain = "NSPOSIXErrorDomain";

/// Codes of NSCocoaErrorDomain that the file operations give.
enum NSCocoaErrorCode : long {
    NSFileNoSuchFileError = 4,
    NSFileReadUnknownError = 256,
    NSFileReadNoPermissionError = 257,
    NSFileReadNoSuchFileError = 260,
    NSFileWriteUnknownError = 512,
    NSFileWriteNoPermissionError = 513,
    NSFileWriteFileExistsError = 516,
    NSFileWriteOutOfSpaceError = 640,
};

/// What went wrong, as a value. Immutable and cheap to copy.
class NSError {
public:
    NSError(std::string domain, long code, std::string localizedDescription,
            std::optional<NSError> underlying = std::nullopt);

    /// The error of a failed system call.
    static NSError posix(int errnoValue);

    const std::string& domain() const { return m_domain; }
    long code() const { return m_code; }
    /// A sentence for people.
    const std::string& localizedDescription() const { return m_localizedDescription; }
    /// The lower error that caused this one; null if there is none.
    const NSError* underlying() const { return m_underlying.get(); }

    /// Domain, code, description and the chain of causes on one line, for logs.
    std::string description() const;

private:
    std::string m_domain;
    long m_code;
    std::string m_localizedDescription;
    std::shared_ptr<const NSError> m_underlying;
};

/// The textual form of an optional error: "Optional(" description ")", or "nil".
std::string describe(const std::optional<NSError>& error);

} // namespace anadrome
