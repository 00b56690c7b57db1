#pragma once

/// Keys and values of colour attachments, the same in pixel buffers and in format descriptions.
namespace anadrome {

inline constexpr const char* kCVImageBufferColorPrimariesKey = "CVImageBufferColorPrimaries";
inline constexpr const char* kCVImageBufferTransferFunctionKey = "CVImageBufferTransferFunction";
inline constexpr const char* kCVImageBufferYCbCrMatrixKey = "CVImageBufferYCbCrMatrix";
inline constexpr const char* kCVImageBufferChromaLocationTopFieldKey = "CVImageBufferChromaLocationTopField";
inline constexpr const char* kCVImageBufferChromaLocationBottomFieldKey =
    "CVImageBufferChromaLocationBottomField";

inline constexpr const char* kCVImageBufferColorPrimaries_ITU_R_709_2 = "ITU_R_709_2";
inline constexpr const char* kCVImageBufferColorPrimaries_EBU_3213 = "EBU_3213";
inline constexpr const char* kCVImageBufferColorPrimaries_SMPTE_C = "SMPTE_C";
inline constexpr const char* kCVImageBufferColorPrimaries_P3_D65 = "P3_D65";
inline constexpr const char* kCVImageBufferColorPrimaries_ITU_R_2020 = "ITU_R_2020";

inline constexpr const char* kCVImageBufferTransferFunction_ITU_R_709_2 = "ITU_R_709_2";
inline constexpr const char* kCVImageBufferTransferFunction_ITU_R_2020 = "ITU_R_2020";
inline constexpr const char* kCVImageBufferTransferFunction_SMPTE_240M_1995 = "SMPTE_240M_1995";
inline constexpr const char* kCVImageBufferTransferFunction_SMPTE_ST_2084_PQ = "SMPTE_ST_2084_PQ";
inline constexpr const char* kCVImageBufferTransferFunction_ITU_R_2100_HLG = "ITU_R_2100_HLG";
inline constexpr const char* kCVImageBufferTransferFunction_Linear = "Linear";
inline constexpr const char* kCVImageBufferTransferFunction_sRGB = "IEC_sRGB";

inline constexpr const char* kCVImageBufferYCbCrMatrix_ITU_R_709_2 = "ITU_R_709_2";
inline constexpr const char* kCVImageBufferYCbCrMatrix_ITU_R_601_4 = "ITU_R_601_4";
inline constexpr const char* kCVImageBufferYCbCrMatrix_SMPTE_240M_1995 = "SMPTE_240M_1995";
inline constexpr const char* kCVImageBufferYCbCrMatrix_ITU_R_2020 = "ITU_R_2020";

inline constexpr const char* kCVImageBufferChromaLocation_Left = "Left";
inline constexpr const char* kCVImageBufferChromaLocation_Center = "Center";
inline constexpr const char* kCVImageBufferChromaLocation_TopLeft = "TopLeft";

} // namespace anadrome
