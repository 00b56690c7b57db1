#pragma once

#include "Platform/AVFoundation/Libav/PictureEncoder.h"

#include <string>

namespace anadrome::libav {

/// Encodes pictures as HEVC, Main or Main 10, at an average bit rate, through libx265.
class HEVCEncoder final : public PictureEncoder {
public:
    HEVCEncoder(Dictionary settings, CMFormatDescriptionRef sourceFormat)
        : PictureEncoder(std::move(settings), std::move(sourceFormat)) {}

private:
    const char* codecName() const override { return "libx265"; }
    AVPixelFormat pixelFormat() const override;
    /// Of the smallest coding tree unit.
    int smallestSide() const override { return 16; }
    const char* croppingFilter() const override { return "hevc_metadata"; }
    void configure(AVCodecContext& context) const override;
    std::string encoderOptions(AVChromaLocation location) const;
};

} // namespace anadrome::libav
