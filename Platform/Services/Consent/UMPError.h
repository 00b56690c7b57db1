#pragma once

namespace anadrome {

inline constexpr const char* UMPErrorDomain = "UMPErrorDomain";

/// Codes of UMPErrorDomain.
enum UMPErrorCode : long {
    UMPRequestErrorCodeInternal = 1,
    UMPRequestErrorCodeNetwork = 3,
    UMPRequestErrorCodeMisconfiguration = 4,
    UMPFormErrorCodeUnavailable = 7,
    UMPFormErrorCodeInvalidViewController = 9,
};

} // namespace anadrome
