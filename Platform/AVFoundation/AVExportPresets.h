#pragma once

namespace anadrome {

/// H.264 High and AAC stereo, with pictures of at most this size, turned with the pictures. Smaller ones stay
/// as they are.
inline constexpr const char* AVAssetExportPreset640x480 = "AVAssetExportPreset640x480";
inline constexpr const char* AVAssetExportPreset1280x720 = "AVAssetExportPreset1280x720";
inline constexpr const char* AVAssetExportPreset1920x1080 = "AVAssetExportPreset1920x1080";

} // namespace anadrome
