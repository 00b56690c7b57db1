#pragma once

namespace anadrome {

inline constexpr const char* PHPhotosErrorDomain = "PHPhotosErrorDomain";

/// Codes of PHPhotosErrorDomain.
enum PHPhotosErrorCode : long {
    PHPhotosErrorInternalError = -1,
    PHPhotosErrorInvalidResource = 3302,
    PHPhotosErrorMissingResource = 3303,
    PHPhotosErrorNotEnoughSpace = 3305,
    PHPhotosErrorAccessUserDenied = 3311,
};

} // namespace anadrome
