#include "Platform/AVFoundation/Libav/HEVCEncoder.h"

#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/HdrMetadata.h"

#include <algorithm>

extern "C" {
#include <libavutil/opt.h>
}

namespace anadrome::libav {

namespace {

/// Where the encoder's speed and memory are traded for its quality: docs/decisions/0004-encoder-settings.md
/// tells how they were chosen.
constexpr const char* x265Preset = "superfast";
constexpr const char* x265Tuning =
    "rc-lookahead=3:bframes=2:aq-mode=2:aq-strength=1:rskip=2:rskip-edge-threshold=2:"
    "psy-rd=0:signhide=0:temporal-mvp=0:subme=0:open-gop=0:info=0";

constexpr std::int64_t defaultBitRate = 10'000'000;

} // namespace

AVPixelFormat HEVCEncoder::pixelFormat() const {
    const std::string* profile = findString(compressionProperties(), AVVideoProfileLevelKey);
    const bool tenBits = profile && *profile == kVTProfileLevel_HEVC_Main10_AutoLevel;
    return tenBits ? AV_PIX_FMT_YUV420P10LE : AV_PIX_FMT_YUV420P;
}

std::string HEVCEncoder::encoderOptions(AVChromaLocation location) const {
    std::string options = std::string(x265Tuning) + ":log-level=none";
    const PictureForm form = targetForm();
    // The encoder refuses pictures smaller than a coding tree unit, and its look at how blocks are inherited
    // writes beyond its tables for pictures narrower than 64 pixels.
    if (std::min(form.width, form.height) < 64)
        options += ":ctu=16:cutree=0";
    if (location != AVCHROMA_LOC_UNSPECIFIED)
        options += ":chromaloc=" + std::to_string(location - AVCHROMA_LOC_LEFT);
    if (sourceFormat() && sourceFormat()->extensions)
        options += hdrEncoderOptions(*sourceFormat()->extensions);
    return options;
}

void HEVCEncoder::configure(AVCodecContext& context) const {
    context.bit_rate = bitRate().value_or(defaultBitRate);
    av_opt_set(context.priv_data, "preset", x265Preset, 0);
    av_opt_set(context.priv_data, "x265-params", encoderOptions(context.chroma_sample_location).c_str(), 0);
}

} // namespace anadrome::libav
