#include "Platform/AVFoundation/Libav/HEVCEncoder.h"

#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/HdrMetadata.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"

#include <algorithm>
#include <cmath>
#include <mutex>

extern "C" {
#include <libavutil/opt.h>
}

namespace anadrome::libav {

namespace {

/// Where the encoder's speed and memory are traded for its quality: docs/decisions/0004-encoder-settings.md
/// tells how they were chosen.
constexpr const char* x265Preset = "superfast";
constexpr const char* x265Tuning =
    "rc-lookahead=3:bframes=2:aq-mode=2:aq-strength=1:rskip=2:rskip-edge-threshold=2:open-gop=0:info=0";

constexpr double defaultBitRate = 10'000'000;
constexpr double defaultFrameRate = 30;

const Dictionary& section(const Dictionary& settings, const char* key) {
    static const Dictionary none;
    const Value* value = find(settings, key);
    return value && value->asDictionary() ? *value->asDictionary() : none;
}

/// The encoder takes whole pairs of pixels.
int evenSide(const Dictionary& settings, const char* key) {
    const int side = static_cast<int>(std::lround(findNumber(settings, key).value_or(0)));
    return side + side % 2;
}

} // namespace

PictureForm HEVCEncoder::targetForm() const {
    const std::string* profile =
        findString(section(m_settings, AVVideoCompressionPropertiesKey), AVVideoProfileLevelKey);
    const bool tenBits = profile && *profile == kVTProfileLevel_HEVC_Main10_AutoLevel;
    return {evenSide(m_settings, AVVideoWidthKey), evenSide(m_settings, AVVideoHeightKey),
            tenBits ? AV_PIX_FMT_YUV420P10LE : AV_PIX_FMT_YUV420P,
            tagsFromColorProperties(section(m_settings, AVVideoColorPropertiesKey))};
}

double HEVCEncoder::frameRate() const {
    const double hint = m_sourceFormat ? m_sourceFormat->frameRateHint : 0;
    return hint > 0 ? std::clamp(hint, 0.1, 1000.0) : defaultFrameRate;
}

std::string HEVCEncoder::encoderOptions(const CVPixelBufferRef& first) const {
    std::string options = std::string(x265Tuning) + ":log-level=none";
    const PictureForm form = targetForm();
    // The encoder refuses pictures smaller than a coding tree unit, and its look at how blocks are inherited
    // writes beyond its tables for pictures narrower than 64 pixels.
    if (std::min(form.width, form.height) < 64)
        options += ":ctu=16:cutree=0";
    const AVChromaLocation location =
        chromaLocationFromAttachments(CVBufferCopyAttachments(first, kCVAttachmentMode_ShouldPropagate));
    if (location != AVCHROMA_LOC_UNSPECIFIED)
        options += ":chromaloc=" + std::to_string(location - AVCHROMA_LOC_LEFT);
    if (m_sourceFormat && m_sourceFormat->extensions)
        options += hdrEncoderOptions(*m_sourceFormat->extensions);
    return options;
}

std::optional<NSError> HEVCEncoder::open(const EncoderInput& first, const CMTime&) {
    const AVCodec* codec = avcodec_find_encoder_by_name("libx265");
    if (!codec)
        return makeAVError(AVErrorEncoderNotFound);
    const PictureForm form = targetForm();
    m_pictures = std::make_unique<EncoderPictures>(form);

    m_context = own(avcodec_alloc_context3(codec));
    m_context->width = form.width;
    m_context->height = form.height;
    m_context->pix_fmt = form.format;
    m_context->color_range = AVCOL_RANGE_MPEG;
    m_context->color_primaries = form.color.primaries;
    m_context->color_trc = form.color.transfer;
    m_context->colorspace = form.color.matrix;
    m_context->time_base = {1, first.time.timescale};
    m_context->framerate = av_d2q(frameRate(), 100000);
    m_context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    // As many as the encoder thinks fit for this machine.
    m_context->thread_count = 0;
    const double bitRate =
        findNumber(section(m_settings, AVVideoCompressionPropertiesKey), AVVideoAverageBitRateKey)
            .value_or(defaultBitRate);
    // The encoder counts in whole kilobits.
    m_context->bit_rate = static_cast<std::int64_t>(std::clamp(bitRate, 1000.0, 2e9));
    av_opt_set(m_context->priv_data, "preset", x265Preset, 0);
    av_opt_set(m_context->priv_data, "x265-params", encoderOptions(first.pixels).c_str(), 0);

    // Setting an encoder up writes tables that all encoders of the library share.
    static std::mutex opening;
    const std::lock_guard lock(opening);
    const int opened = avcodec_open2(m_context.get(), codec, nullptr);
    return opened < 0 ? std::optional(errorFrom(opened, AVErrorUnsupportedOutputSettings)) : std::nullopt;
}

std::optional<NSError> HEVCEncoder::encode(const EncoderInput& input, const PacketSink& sink) {
    Result<AVFrame*> frame = m_pictures->convert(input.pixels);
    if (!frame)
        return frame.error();
    const CMTime time =
        CMTimeConvertScale(input.time, m_context->time_base.den, CMTimeRoundingMethod::RoundHalfAwayFromZero);
    (*frame)->pts = time.value;
    (*frame)->pict_type = AV_PICTURE_TYPE_NONE;
    m_times.push_back(time.value);
    return encodeFrame(m_context.get(), *frame, m_packet.get(), withDurations(sink));
}

std::optional<NSError> HEVCEncoder::finish(const PacketSink& sink) {
    return encodeFrame(m_context.get(), nullptr, m_packet.get(), withDurations(sink));
}

/// A picture lasts until the next one, the last one as long as the one before it.
PacketSink HEVCEncoder::withDurations(const PacketSink& sink) const {
    return [this, &sink](AVPacket& packet) {
        auto next = std::upper_bound(m_times.begin(), m_times.end(), packet.pts);
        if (next == m_times.end() && m_times.size() > 1)
            --next;
        // With so few pictures nothing is reordered, and the encoder leaves their decode times undefined.
        if (m_times.size() < 3)
            packet.dts = packet.pts;
        packet.duration = next != m_times.begin() && next != m_times.end()
                              ? *next - *std::prev(next)
                              : std::llround(m_context->time_base.den / frameRate());
        return sink(packet);
    };
}

} // namespace anadrome::libav
