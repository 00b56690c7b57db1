#include "Platform/AVFoundation/Libav/H264Encoder.h"

extern "C" {
#include <libavutil/opt.h>
}

namespace anadrome::libav {

namespace {

/// docs/decisions/0007-export-settings.md tells how these were chosen.
constexpr const char* x264Preset = "superfast";
constexpr double constantRateFactor = 22;
/// Pictures from one key frame to the next at most: what a player decodes to show the one it seeks.
constexpr int keyFrameInterval = 60;

} // namespace

void H264Encoder::configure(AVCodecContext& context) const {
    context.profile = FF_PROFILE_H264_HIGH;
    context.gop_size = keyFrameInterval;
    av_opt_set(context.priv_data, "preset", x264Preset, 0);
    av_opt_set(context.priv_data, "profile", "high", 0);
    if (const std::optional<std::int64_t> rate = bitRate())
        context.bit_rate = *rate;
    else
        av_opt_set_double(context.priv_data, "crf", constantRateFactor, 0);
}

} // namespace anadrome::libav
