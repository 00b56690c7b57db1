#include "Models/SourceColor.h"

#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/CoreVideo/CVImageBufferKeys.h"

#include <span>

namespace anadrome {

namespace {

struct Choice {
    const char* extension;
    const char* setting;
};

constexpr Choice transferFunctions[] = {
    {kCVImageBufferTransferFunction_ITU_R_2100_HLG, AVVideoTransferFunction_ITU_R_2100_HLG},
    {kCVImageBufferTransferFunction_SMPTE_ST_2084_PQ, AVVideoTransferFunction_SMPTE_ST_2084_PQ},
    {kCVImageBufferTransferFunction_ITU_R_709_2, AVVideoTransferFunction_ITU_R_709_2},
    {kCVImageBufferTransferFunction_Linear, AVVideoTransferFunction_Linear},
};

constexpr Choice colorPrimaries[] = {
    {kCVImageBufferColorPrimaries_ITU_R_709_2, AVVideoColorPrimaries_ITU_R_709_2},
    {kCVImageBufferColorPrimaries_ITU_R_2020, AVVideoColorPrimaries_ITU_R_2020},
    {kCVImageBufferColorPrimaries_P3_D65, AVVideoColorPrimaries_P3_D65},
};

constexpr Choice yCbCrMatrices[] = {
    {kCVImageBufferYCbCrMatrix_ITU_R_709_2, AVVideoYCbCrMatrix_ITU_R_709_2},
    {kCVImageBufferYCbCrMatrix_ITU_R_2020, AVVideoYCbCrMatrix_ITU_R_2020},
};

/// The setting for the extension's value; any value without one of its own gives `otherwise`.
std::string choose(const Dictionary& extensions, const char* key, std::span<const Choice> choices,
                   const char* otherwise) {
    if (const std::string* value = findString(extensions, key))
        for (const Choice& choice : choices)
            if (*value == choice.extension)
                return choice.setting;
    return otherwise;
}

} // namespace

SourceColor sourceColor(const AVAssetTrack& track) {
    if (track.formatDescriptions().empty())
        return {};
    const std::optional<Dictionary>& extensions =
        CMFormatDescriptionGetExtensions(track.formatDescriptions().front());
    if (!extensions)
        return {};
    const std::string transfer = choose(*extensions, kCVImageBufferTransferFunctionKey, transferFunctions,
                                        AVVideoTransferFunction_ITU_R_709_2);
    SourceColor color;
    color.isHDR = transfer == AVVideoTransferFunction_ITU_R_2100_HLG ||
                  transfer == AVVideoTransferFunction_SMPTE_ST_2084_PQ;
    color.colorProperties = Dictionary{
        {AVVideoTransferFunctionKey, transfer},
        {AVVideoColorPrimariesKey, choose(*extensions, kCVImageBufferColorPrimariesKey, colorPrimaries,
                                          AVVideoColorPrimaries_ITU_R_709_2)},
        {AVVideoYCbCrMatrixKey,
         choose(*extensions, kCVImageBufferYCbCrMatrixKey, yCbCrMatrices, AVVideoYCbCrMatrix_ITU_R_709_2)},
    };
    return color;
}

} // namespace anadrome
