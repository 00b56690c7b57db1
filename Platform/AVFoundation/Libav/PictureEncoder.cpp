#include "Platform/AVFoundation/Libav/PictureEncoder.h"

#include "Platform/AVFoundation/AVVideoSettings.h"
#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/Padding.h"
#include "Platform/AVFoundation/Libav/PixelFormats.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace anadrome::libav {

namespace {

constexpr double defaultFrameRate = 30;

const Dictionary& section(const Dictionary& settings, const char* key) {
    static const Dictionary none;
    const Value* value = find(settings, key);
    return value && value->asDictionary() ? *value->asDictionary() : none;
}

/// The encoders take whole pairs of pixels.
int evenSide(const Dictionary& settings, const char* key) {
    const int side = static_cast<int>(std::lround(findNumber(settings, key).value_or(0)));
    return side + side % 2;
}

} // namespace

PictureForm PictureEncoder::targetForm() const {
    return {evenSide(m_settings, AVVideoWidthKey), evenSide(m_settings, AVVideoHeightKey), pixelFormat(),
            tagsFromColorProperties(section(m_settings, AVVideoColorPropertiesKey))};
}

const Dictionary& PictureEncoder::compressionProperties() const {
    return section(m_settings, AVVideoCompressionPropertiesKey);
}

std::optional<std::int64_t> PictureEncoder::bitRate() const {
    const std::optional<double> bitRate = findNumber(compressionProperties(), AVVideoAverageBitRateKey);
    // The encoders count in whole kilobits.
    return bitRate ? std::optional(static_cast<std::int64_t>(std::clamp(*bitRate, 1000.0, 2e9)))
                   : std::nullopt;
}

double PictureEncoder::frameRate() const {
    const double hint = m_sourceFormat ? m_sourceFormat->frameRateHint : 0;
    return hint > 0 ? std::clamp(hint, 0.1, 1000.0) : defaultFrameRate;
}

std::optional<NSError> PictureEncoder::open(const EncoderInput& first, const CMTime&) {
    const AVCodec* codec = avcodec_find_encoder_by_name(codecName());
    if (!codec)
        return makeAVError(AVErrorEncoderNotFound);
    const PictureForm form = targetForm();
    m_pictures = std::make_unique<EncoderPictures>(form);

    m_context = own(avcodec_alloc_context3(codec));
    m_context->width = std::max(form.width, smallestSide());
    m_context->height = std::max(form.height, smallestSide());
    m_context->pix_fmt = form.format;
    m_context->color_range = AVCOL_RANGE_MPEG;
    m_context->color_primaries = form.color.primaries;
    m_context->color_trc = form.color.transfer;
    m_context->colorspace = form.color.matrix;
    m_context->chroma_sample_location = chromaLocationFromAttachments(
        CVBufferCopyAttachments(first.pixels, kCVAttachmentMode_ShouldPropagate));
    m_context->time_base = {1, first.time.timescale};
    m_context->framerate = av_d2q(frameRate(), 100000);
    m_context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    // As many as the encoder thinks fit for this machine.
    m_context->thread_count = 0;
    configure(*m_context);

    // Setting an encoder up writes tables that all encoders of its library share.
    static std::mutex opening;
    const std::lock_guard lock(opening);
    const int opened = avcodec_open2(m_context.get(), codec, nullptr);
    return opened < 0 ? std::optional(errorFrom(opened, AVErrorUnsupportedOutputSettings)) : std::nullopt;
}

Result<Owned<AVCodecParameters>> PictureEncoder::parameters() const {
    Result<Owned<AVCodecParameters>> coded = TrackEncoder::parameters();
    const PictureForm form = targetForm();
    return coded && isPadded() ? cropped(**coded, croppingFilter(), form.width, form.height)
                               : std::move(coded);
}

bool PictureEncoder::isPadded() const {
    const PictureForm form = targetForm();
    return m_context->width != form.width || m_context->height != form.height;
}

std::optional<NSError> PictureEncoder::encode(const EncoderInput& input, const PacketSink& sink) {
    Result<AVFrame*> frame = m_pictures->convert(input.pixels);
    if (!frame)
        return frame.error();
    Owned<AVFrame> padded;
    if (isPadded()) {
        padded = paddedTo(m_context->width, m_context->height, **frame);
        frame = padded.get();
    }
    (*frame)->pts = toTicks(input.time);
    (*frame)->pict_type = AV_PICTURE_TYPE_NONE;
    m_times.push_back((*frame)->pts);
    m_lastDuration = CMTIME_IS_NUMERIC(input.duration) && input.duration.value > 0
                         ? std::optional(toTicks(CMTimeAdd(input.time, input.duration)) - (*frame)->pts)
                         : std::nullopt;
    return encodeFrame(m_context.get(), *frame, m_packet.get(), withDurations(sink));
}

std::optional<NSError> PictureEncoder::finish(const PacketSink& sink) {
    return encodeFrame(m_context.get(), nullptr, m_packet.get(), withDurations(sink));
}

PacketSink PictureEncoder::withDurations(const PacketSink& sink) const {
    return [this, &sink](AVPacket& packet) {
        // With so few pictures nothing is reordered, and the encoder leaves their decode times undefined.
        if (m_times.size() < 3)
            packet.dts = packet.pts;
        packet.duration = durationAt(packet.pts);
        return sink(packet);
    };
}

std::int64_t PictureEncoder::toTicks(const CMTime& time) const {
    return CMTimeConvertScale(time, m_context->time_base.den, CMTimeRoundingMethod::RoundHalfAwayFromZero)
        .value;
}

/// A picture lasts until the next one; the last one as it says itself, or as long as the one before it.
std::int64_t PictureEncoder::durationAt(std::int64_t pts) const {
    auto next = std::upper_bound(m_times.begin(), m_times.end(), pts);
    if (next == m_times.end() && m_lastDuration.value_or(0) > 0)
        return *m_lastDuration;
    if (next == m_times.end() && m_times.size() > 1)
        --next;
    return next != m_times.begin() && next != m_times.end()
               ? *next - *std::prev(next)
               : std::llround(m_context->time_base.den / frameRate());
}

} // namespace anadrome::libav
