#include "Platform/AVFoundation/Libav/ColorTags.h"

#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/CoreVideo/CVImageBufferKeys.h"

namespace anadrome::libav {

namespace {

template <typename Code>
struct Name {
    Code code;
    const char* name;
};

// Where several code points share a name, the first is the one that the name stands for.
constexpr Name<AVColorPrimaries> primariesNames[] = {
    {AVCOL_PRI_BT709, kCVImageBufferColorPrimaries_ITU_R_709_2},
    {AVCOL_PRI_BT470BG, kCVImageBufferColorPrimaries_EBU_3213},
    {AVCOL_PRI_SMPTE170M, kCVImageBufferColorPrimaries_SMPTE_C},
    {AVCOL_PRI_SMPTE240M, kCVImageBufferColorPrimaries_SMPTE_C},
    {AVCOL_PRI_SMPTE432, kCVImageBufferColorPrimaries_P3_D65},
    {AVCOL_PRI_BT2020, kCVImageBufferColorPrimaries_ITU_R_2020},
};

constexpr Name<AVColorTransferCharacteristic> transferNames[] = {
    {AVCOL_TRC_BT709, kCVImageBufferTransferFunction_ITU_R_709_2},
    {AVCOL_TRC_SMPTE170M, kCVImageBufferTransferFunction_ITU_R_709_2},
    {AVCOL_TRC_BT2020_10, kCVImageBufferTransferFunction_ITU_R_2020},
    {AVCOL_TRC_BT2020_12, kCVImageBufferTransferFunction_ITU_R_2020},
    {AVCOL_TRC_SMPTE240M, kCVImageBufferTransferFunction_SMPTE_240M_1995},
    {AVCOL_TRC_SMPTE2084, kCVImageBufferTransferFunction_SMPTE_ST_2084_PQ},
    {AVCOL_TRC_ARIB_STD_B67, kCVImageBufferTransferFunction_ITU_R_2100_HLG},
    {AVCOL_TRC_LINEAR, kCVImageBufferTransferFunction_Linear},
    {AVCOL_TRC_IEC61966_2_1, kCVImageBufferTransferFunction_sRGB},
};

constexpr Name<AVColorSpace> matrixNames[] = {
    {AVCOL_SPC_BT709, kCVImageBufferYCbCrMatrix_ITU_R_709_2},
    {AVCOL_SPC_SMPTE170M, kCVImageBufferYCbCrMatrix_ITU_R_601_4},
    {AVCOL_SPC_BT470BG, kCVImageBufferYCbCrMatrix_ITU_R_601_4},
    {AVCOL_SPC_SMPTE240M, kCVImageBufferYCbCrMatrix_SMPTE_240M_1995},
    {AVCOL_SPC_BT2020_NCL, kCVImageBufferYCbCrMatrix_ITU_R_2020},
};

template <typename Code, std::size_t Count>
void attach(Dictionary& attachments, const char* key, Code code, const Name<Code> (&names)[Count]) {
    for (const Name<Code>& entry : names)
        if (entry.code == code) {
            attachments.emplace(key, entry.name);
            return;
        }
}

template <typename Code, std::size_t Count>
Code lookUp(const Dictionary& dictionary, const char* key, const Name<Code> (&names)[Count],
            Code unspecified) {
    if (const std::string* name = findString(dictionary, key))
        for (const Name<Code>& entry : names)
            if (*name == entry.name)
                return entry.code;
    return unspecified;
}

ColorTags tagsUnder(const Dictionary& dictionary, const char* primariesKey, const char* transferKey,
                    const char* matrixKey) {
    return {lookUp(dictionary, primariesKey, primariesNames, AVCOL_PRI_UNSPECIFIED),
            lookUp(dictionary, transferKey, transferNames, AVCOL_TRC_UNSPECIFIED),
            lookUp(dictionary, matrixKey, matrixNames, AVCOL_SPC_UNSPECIFIED)};
}

} // namespace

ColorTags filled(ColorTags tags, const ColorTags& other) {
    if (tags.primaries == AVCOL_PRI_UNSPECIFIED)
        tags.primaries = other.primaries;
    if (tags.transfer == AVCOL_TRC_UNSPECIFIED)
        tags.transfer = other.transfer;
    if (tags.matrix == AVCOL_SPC_UNSPECIFIED)
        tags.matrix = other.matrix;
    return tags;
}

ColorTags assumedTags(int height) {
    if (height < 720)
        return {AVCOL_PRI_SMPTE170M, AVCOL_TRC_BT709, AVCOL_SPC_SMPTE170M};
    return {AVCOL_PRI_BT709, AVCOL_TRC_BT709, AVCOL_SPC_BT709};
}

Dictionary attachmentsFor(const ColorTags& tags) {
    Dictionary attachments;
    attach(attachments, kCVImageBufferColorPrimariesKey, tags.primaries, primariesNames);
    attach(attachments, kCVImageBufferTransferFunctionKey, tags.transfer, transferNames);
    attach(attachments, kCVImageBufferYCbCrMatrixKey, tags.matrix, matrixNames);
    return attachments;
}

ColorTags tagsFromAttachments(const Dictionary& attachments) {
    return tagsUnder(attachments, kCVImageBufferColorPrimariesKey, kCVImageBufferTransferFunctionKey,
                     kCVImageBufferYCbCrMatrixKey);
}

ColorTags tagsFromColorProperties(const Dictionary& properties) {
    return tagsUnder(properties, AVVideoColorPrimariesKey, AVVideoTransferFunctionKey, AVVideoYCbCrMatrixKey);
}

Dictionary colorPropertiesFor(const ColorTags& tags) {
    Dictionary properties;
    attach(properties, AVVideoColorPrimariesKey, tags.primaries, primariesNames);
    attach(properties, AVVideoTransferFunctionKey, tags.transfer, transferNames);
    attach(properties, AVVideoYCbCrMatrixKey, tags.matrix, matrixNames);
    return properties;
}

bool isHdr(const ColorTags& tags) {
    return tags.transfer == AVCOL_TRC_SMPTE2084 || tags.transfer == AVCOL_TRC_ARIB_STD_B67;
}

} // namespace anadrome::libav
