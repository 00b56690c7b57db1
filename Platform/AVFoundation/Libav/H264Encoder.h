#pragma once

#include "Platform/AVFoundation/Libav/PictureEncoder.h"

namespace anadrome::libav {

/// Encodes pictures as H.264 High through libx264: at an average bit rate if the settings name one, otherwise
/// at a constant quality.
class H264Encoder final : public PictureEncoder {
public:
    H264Encoder(Dictionary settings, CMFormatDescriptionRef sourceFormat)
        : PictureEncoder(std::move(settings), std::move(sourceFormat)) {}

private:
    const char* codecName() const override { return "libx264"; }
    AVPixelFormat pixelFormat() const override { return AV_PIX_FMT_YUV420P; }
    int smallestSide() const override { return 2; }
    const char* croppingFilter() const override { return "h264_metadata"; }
    void configure(AVCodecContext& context) const override;
};

} // namespace anadrome::libav
