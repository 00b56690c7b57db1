#pragma once

/// Keys and values of the settings of a video writer input.
namespace anadrome {

/// Required: the codec, a string.
inline constexpr const char* AVVideoCodecKey = "AVVideoCodecKey";
inline constexpr const char* AVVideoCodecTypeHEVC = "hvc1";
inline constexpr const char* AVVideoCodecTypeH264 = "avc1";

/// Required: the size of the encoded picture in pixels, numbers.
inline constexpr const char* AVVideoWidthKey = "AVVideoWidthKey";
inline constexpr const char* AVVideoHeightKey = "AVVideoHeightKey";

/// A dictionary of the three entries below: what the pictures are converted to and tagged as.
inline constexpr const char* AVVideoColorPropertiesKey = "AVVideoColorPropertiesKey";
inline constexpr const char* AVVideoColorPrimariesKey = "ColorPrimaries";
inline constexpr const char* AVVideoTransferFunctionKey = "TransferFunction";
inline constexpr const char* AVVideoYCbCrMatrixKey = "YCbCrMatrix";

inline constexpr const char* AVVideoColorPrimaries_ITU_R_709_2 = "ITU_R_709_2";
inline constexpr const char* AVVideoColorPrimaries_ITU_R_2020 = "ITU_R_2020";
inline constexpr const char* AVVideoColorPrimaries_P3_D65 = "P3_D65";
inline constexpr const char* AVVideoTransferFunction_ITU_R_709_2 = "ITU_R_709_2";
inline constexpr const char* AVVideoTransferFunction_SMPTE_ST_2084_PQ = "SMPTE_ST_2084_PQ";
inline constexpr const char* AVVideoTransferFunction_ITU_R_2100_HLG = "ITU_R_2100_HLG";
inline constexpr const char* AVVideoTransferFunction_Linear = "Linear";
inline constexpr const char* AVVideoYCbCrMatrix_ITU_R_709_2 = "ITU_R_709_2";
inline constexpr const char* AVVideoYCbCrMatrix_ITU_R_2020 = "ITU_R_2020";

/// A dictionary of the two entries below.
inline constexpr const char* AVVideoCompressionPropertiesKey = "AVVideoCompressionPropertiesKey";
/// Bits per second, a number. Without it HEVC gets 10,000,000, and H.264 a constant quality.
inline constexpr const char* AVVideoAverageBitRateKey = "AverageBitRate";
/// A string, for HEVC. Default: Main, 8 bits. H.264 is always High.
inline constexpr const char* AVVideoProfileLevelKey = "ProfileLevel";
inline constexpr const char* kVTProfileLevel_HEVC_Main10_AutoLevel = "HEVC_Main10_AutoLevel";

} // namespace anadrome
