#include "Models/FixedPreferredTransform.h"
#include "Models/SourceColor.h"
#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/CoreVideo/CVImageBufferKeys.h"

#include <gtest/gtest.h>

namespace anadrome {

namespace {

AVAssetTrack trackWith(std::optional<Dictionary> extensions) {
    CMFormatDescription description;
    description.extensions = std::move(extensions);
    return AVAssetTrack({.formatDescriptions = {std::make_shared<const CMFormatDescription>(description)}});
}

} // namespace

TEST(FixedPreferredTransform, EachOrientationGetsItsTranslationAndOthersKeepTheirs) {
    const struct {
        double a, b, c, d, tx, ty;
    } rows[] = {
        {1, 0, 0, 1, 0, 0},    {1, 0, 0, -1, 0, 480},  {-1, 0, 0, 1, 640, 0}, {-1, 0, 0, -1, 640, 480},
        {0, -1, 1, 0, 0, 640}, {0, 1, -1, 0, 480, 0},  {0, 1, 1, 0, 0, 0},    {0, -1, -1, 0, 480, 640},
        {2, 0, 0, 2, 77, 88},  {1, 0.5, 0, 1, 77, 88},
    };
    for (const auto& row : rows) {
        const AVAssetTrack track(
            {.naturalSize = {640, 480}, .preferredTransform = {row.a, row.b, row.c, row.d, 77, 88}});
        EXPECT_EQ(fixedPreferredTransform(track),
                  (CGAffineTransform{row.a, row.b, row.c, row.d, row.tx, row.ty}));
    }
}

TEST(SourceColor, TheTransferFunctionAloneDecidesOnHDR) {
    const struct {
        const char *transfer, *primaries, *matrix;
        const char *transferSetting, *primariesSetting, *matrixSetting;
        bool isHDR;
    } rows[] = {
        {"ITU_R_2100_HLG", "ITU_R_2020", "ITU_R_2020", "ITU_R_2100_HLG", "ITU_R_2020", "ITU_R_2020", true},
        {"SMPTE_ST_2084_PQ", "P3_D65", "ITU_R_709_2", "SMPTE_ST_2084_PQ", "P3_D65", "ITU_R_709_2", true},
        {"Linear", "ITU_R_709_2", "ITU_R_601_4", "Linear", "ITU_R_709_2", "ITU_R_709_2", false},
        {"IEC_sRGB", "SMPTE_C", "SMPTE_240M_1995", "ITU_R_709_2", "ITU_R_709_2", "ITU_R_709_2", false},
    };
    for (const auto& row : rows) {
        const SourceColor color =
            sourceColor(trackWith(Dictionary{{kCVImageBufferTransferFunctionKey, row.transfer},
                                             {kCVImageBufferColorPrimariesKey, row.primaries},
                                             {kCVImageBufferYCbCrMatrixKey, row.matrix}}));
        EXPECT_EQ(color.isHDR, row.isHDR) << row.transfer;
        ASSERT_TRUE(color.colorProperties);
        EXPECT_EQ(*color.colorProperties, (Dictionary{{AVVideoTransferFunctionKey, row.transferSetting},
                                                      {AVVideoColorPrimariesKey, row.primariesSetting},
                                                      {AVVideoYCbCrMatrixKey, row.matrixSetting}}));
    }
    EXPECT_TRUE(sourceColor(trackWith(Dictionary{})).colorProperties)
        << "extensions without colour count as any other";
    EXPECT_FALSE(sourceColor(trackWith(std::nullopt)).colorProperties);
    EXPECT_FALSE(sourceColor(AVAssetTrack({})).colorProperties);
}

} // namespace anadrome
