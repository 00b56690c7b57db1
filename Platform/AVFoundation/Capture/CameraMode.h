#pragma once

#include <optional>
#include <string>
#include <vector>

namespace anadrome::capture {

/// One of the ways in which a camera can give pictures.
struct CameraMode {
    /// The media library's name of the pixel format or coding.
    std::string format;
    int width = 0;
    int height = 0;
    double pictureRate = 0;

    friend bool operator==(const CameraMode&, const CameraMode&) = default;
};

/// The largest picture that comes about 30 times a second, or of those that don't, the one that comes most
/// often. Of two alike the one that needn't be decoded, and no more pictures a second than needed. Pictures
/// beyond 1920 × 1080 are left out where there are others: they can't be encoded while they come.
std::optional<CameraMode> bestMode(const std::vector<CameraMode>& modes);

} // namespace anadrome::capture
