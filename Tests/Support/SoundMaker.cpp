#include "Tests/Support/TrackMakers.h"

#include "Platform/AVFoundation/Libav/LibavVersions.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

namespace {

constexpr int kUsualFrameSize = 1024;

CodecPtr openEncoder(const AVFormatContext& file, const ClipOptions& options) {
    const AVCodec& codec = encoderNamed(options.audioCodec);
    CodecPtr encoder(checked(avcodec_alloc_context3(&codec), "no memory for an encoder"));
    encoder->sample_fmt = libav::firstSampleFormat(codec, AV_SAMPLE_FMT_S16);
    encoder->sample_rate = options.audioRate;
    encoder->time_base = {1, options.audioRate};
    encoder->bit_rate = std::int64_t{64000} * options.audioChannels;
    encoder->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
    av_channel_layout_default(&encoder->ch_layout, options.audioChannels);
    if (file.oformat->flags & AVFMT_GLOBALHEADER)
        encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    checked(avcodec_open2(encoder.get(), &codec, nullptr),
            options.audioCodec + " cannot encode " + std::to_string(options.audioChannels) + " channels at " +
                std::to_string(options.audioRate) + " Hz");
    return encoder;
}

FramePtr emptySound(const AVCodecContext& encoder, int sampleCount) {
    FramePtr frame = makeFrame();
    frame->format = encoder.sample_fmt;
    frame->sample_rate = encoder.sample_rate;
    frame->nb_samples = sampleCount;
    checked(av_channel_layout_copy(&frame->ch_layout, &encoder.ch_layout), "no memory for sound");
    checked(av_frame_get_buffer(frame.get(), 0), "no memory for sound");
    return frame;
}

} // namespace

SoundMaker::SoundMaker(AVFormatContext& file, const ClipOptions& options, double seconds, int index)
    : track_(file, openEncoder(file, options), options.audioStartSeconds.value_or(options.startSeconds)),
      startSeconds_(options.audioStartSeconds.value_or(options.startSeconds)),
      tones_(options.audioRate, options.audioChannels, index),
      converter_(makeSampleConverter(track_.encoder().ch_layout, options.audioRate, AV_SAMPLE_FMT_FLT,
                                     track_.encoder().sample_fmt)),
      length_(std::llround(options.audioSeconds.value_or(seconds) * options.audioRate)) {}

std::optional<double> SoundMaker::nextSeconds() const {
    if (position_ == length_)
        return std::nullopt;
    return startSeconds_ + static_cast<double>(position_) / track_.encoder().sample_rate;
}

void SoundMaker::makeNext() {
    const AVCodecContext& encoder = track_.encoder();
    const std::int64_t whole = encoder.frame_size ? encoder.frame_size : kUsualFrameSize;
    const int count = static_cast<int>(std::min(whole, length_ - position_));
    const FramePtr frame = emptySound(encoder, count);
    const std::vector<float> tones = tones_.next(count);
    const auto* source = reinterpret_cast<const std::uint8_t*>(tones.data());
    checked(swr_convert(converter_.get(), frame->extended_data, count, &source, count),
            "cannot convert sound");
    frame->pts = position_;
    libav::setDuration(*frame, count);
    track_.encode(frame.get());
    position_ += count;
}

} // namespace anadrome::testing_support
