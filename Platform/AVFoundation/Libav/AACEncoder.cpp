#include "Platform/AVFoundation/Libav/AACEncoder.h"

#include "Platform/AVFoundation/AVAudioSettings.h"
#include "Platform/AVFoundation/Libav/Errors.h"
#include "Platform/AVFoundation/Libav/Resampler.h"

#include <algorithm>

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace anadrome::libav {

namespace {

std::optional<NSError> check(int result) {
    return result < 0 ? std::optional(errorFrom(result, AVErrorUnknown)) : std::nullopt;
}

std::int64_t sampleAt(const CMTime& time, int rate) {
    return CMTimeConvertScale(time, rate, CMTimeRoundingMethod::RoundHalfAwayFromZero).value;
}

} // namespace

std::optional<NSError> AACEncoder::open(const EncoderInput&, const CMTime& sessionStart) {
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
    if (!codec)
        return makeAVError(AVErrorEncoderNotFound);
    m_start = sessionStart;
    m_context = own(avcodec_alloc_context3(codec));
    m_context->sample_rate = static_cast<int>(*findNumber(m_settings, AVSampleRateKey));
    m_context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    av_channel_layout_default(&m_context->ch_layout,
                              static_cast<int>(*findNumber(m_settings, AVNumberOfChannelsKey)));
    m_context->bit_rate =
        static_cast<std::int64_t>(findNumber(m_settings, AVEncoderBitRateKey).value_or(128000));
    m_context->time_base = {1, m_context->sample_rate};
    m_context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (const int opened = avcodec_open2(m_context.get(), codec, nullptr); opened < 0)
        return errorFrom(opened, AVErrorUnsupportedOutputSettings);
    m_waiting = own(av_audio_fifo_alloc(m_context->sample_fmt, m_context->ch_layout.nb_channels, 8192));
    return std::nullopt;
}

std::optional<NSError> AACEncoder::prepareResampler(const AudioStreamBasicDescription& format) {
    if (m_resampler && format == m_inputFormat)
        return std::nullopt;
    if (format.formatID != kAudioFormatLinearPCM || format.bitsPerChannel != 16 ||
        format.channelsPerFrame == 0)
        return makeAVError(AVErrorUnsupportedOutputSettings);
    if (m_resampler)
        if (std::optional<NSError> error = resample(nullptr, 0))
            return error;
    m_inputFormat = format;
    m_resampler = makeResampler({usualLayout(static_cast<int>(format.channelsPerFrame)), AV_SAMPLE_FMT_S16,
                                 static_cast<int>(format.sampleRate)},
                                {m_context->ch_layout, m_context->sample_fmt, m_context->sample_rate});
    return m_resampler ? std::nullopt : std::optional(makeAVError(AVErrorUnsupportedOutputSettings));
}

std::int64_t AACEncoder::inputEnd() const {
    const std::int64_t delayed = m_resampler ? swr_get_delay(m_resampler.get(), m_context->sample_rate) : 0;
    return m_encoded + av_audio_fifo_size(m_waiting.get()) + delayed;
}

std::optional<NSError> AACEncoder::encode(const EncoderInput& input, const PacketSink& sink) {
    const CMFormatDescriptionRef description = CMSampleBufferGetFormatDescription(input.sound);
    const CMBlockBufferRef block = CMSampleBufferGetDataBuffer(input.sound);
    if (!description || !block)
        return std::nullopt;
    if (std::optional<NSError> error = prepareResampler(description->audio))
        return error;
    if (CMTIME_IS_NUMERIC(input.time))
        if (std::optional<NSError> error = fillGapUpTo(input.time))
            return error;
    const auto* data = reinterpret_cast<const std::uint8_t*>(block->bytes().data());
    const int count = static_cast<int>(block->bytes().size() / description->audio.bytesPerFrame);
    if (std::optional<NSError> error = resample(&data, count))
        return error;
    return encodeWholeFrames(sink);
}

/// Times that are only a little off are left to follow on: no click for a rounding error.
std::optional<NSError> AACEncoder::fillGapUpTo(const CMTime& time) {
    const int rate = m_context->sample_rate;
    const std::int64_t gap = sampleAt(CMTimeSubtract(time, m_start), rate) - inputEnd();
    if (gap < rate / 50)
        return std::nullopt;
    // The resampler takes silence in at its own end of the line.
    const std::int64_t silence = av_rescale(gap, static_cast<std::int64_t>(m_inputFormat.sampleRate), rate);
    const std::vector<std::uint8_t> zeros(static_cast<std::size_t>(m_inputFormat.bytesPerFrame) * 4096);
    for (std::int64_t left = silence; left > 0; left -= 4096) {
        const std::uint8_t* data = zeros.data();
        if (auto error = resample(&data, static_cast<int>(std::min<std::int64_t>(left, 4096))))
            return error;
    }
    return std::nullopt;
}

/// Converts the sound, or what the resampler still holds if there is none, and puts it with what waits.
std::optional<NSError> AACEncoder::resample(const std::uint8_t* const* data, int count) {
    const int room = swr_get_out_samples(m_resampler.get(), count);
    if (room <= 0)
        return check(room);
    const Owned<AVFrame> converted = makeFrame();
    converted->format = m_context->sample_fmt;
    converted->nb_samples = room;
    converted->sample_rate = m_context->sample_rate;
    av_channel_layout_copy(&converted->ch_layout, &m_context->ch_layout);
    if (const int allocated = av_frame_get_buffer(converted.get(), 0); allocated < 0)
        return errorFrom(allocated, AVErrorOutOfMemory);
    const int made = swr_convert(m_resampler.get(), converted->extended_data, room,
                                 const_cast<const std::uint8_t**>(data), count);
    if (made <= 0)
        return check(made);
    return check(
        av_audio_fifo_write(m_waiting.get(), reinterpret_cast<void**>(converted->extended_data), made));
}

std::optional<NSError> AACEncoder::encodeWholeFrames(const PacketSink& sink) {
    while (av_audio_fifo_size(m_waiting.get()) >= m_context->frame_size)
        if (std::optional<NSError> error = encodeFrameOf(m_context->frame_size, sink))
            return error;
    return std::nullopt;
}

std::optional<NSError> AACEncoder::encodeFrameOf(int samples, const PacketSink& sink) {
    const Owned<AVFrame> frame = makeFrame();
    frame->format = m_context->sample_fmt;
    frame->nb_samples = samples;
    frame->sample_rate = m_context->sample_rate;
    av_channel_layout_copy(&frame->ch_layout, &m_context->ch_layout);
    if (const int allocated = av_frame_get_buffer(frame.get(), 0); allocated < 0)
        return errorFrom(allocated, AVErrorOutOfMemory);
    av_audio_fifo_read(m_waiting.get(), reinterpret_cast<void**>(frame->extended_data), samples);
    frame->pts = sampleAt(m_start, m_context->sample_rate) + m_encoded;
    m_encoded += samples;
    return encodeFrame(m_context.get(), frame.get(), m_packet.get(), sink);
}

std::optional<NSError> AACEncoder::finish(const PacketSink& sink) {
    if (m_resampler)
        if (std::optional<NSError> error = resample(nullptr, 0))
            return error;
    if (std::optional<NSError> error = encodeWholeFrames(sink))
        return error;
    if (const int rest = av_audio_fifo_size(m_waiting.get()); rest > 0)
        if (std::optional<NSError> error = encodeFrameOf(rest, sink))
            return error;
    return encodeFrame(m_context.get(), nullptr, m_packet.get(), sink);
}

} // namespace anadrome::libav
