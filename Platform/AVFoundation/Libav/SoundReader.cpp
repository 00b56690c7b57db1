#include "Platform/AVFoundation/Libav/SoundReader.h"

#include "Platform/AVFoundation/AVAudioSettings.h"

#include <algorithm>
#include <cstring>

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace anadrome::libav {

namespace {

constexpr int samplesPerBuffer = 1024;

CMFormatDescriptionRef describe(int sampleRate, int channels) {
    CMFormatDescription description;
    description.mediaType = CMMediaType::audio;
    description.mediaSubType = kAudioFormatLinearPCM;
    description.audio = {static_cast<double>(sampleRate), kAudioFormatLinearPCM,
                         static_cast<std::uint32_t>(channels), 16, static_cast<std::uint32_t>(channels) * 2};
    return std::make_shared<const CMFormatDescription>(description);
}

bool sameForm(const AVFrame& a, const AVFrame& b) {
    return a.format == b.format && a.sample_rate == b.sample_rate &&
           av_channel_layout_compare(&a.ch_layout, &b.ch_layout) == 0;
}

} // namespace

/// (Re)makes the resampler when the sound's form changes; what comes out keeps the form of the first sound.
bool SoundReader::prepare(const AVFrame& frame) {
    if (m_resampler && sameForm(*m_source, frame))
        return true;
    if (!m_description)
        m_description = describe(frame.sample_rate, frame.ch_layout.nb_channels);
    AVChannelLayout in = frame.ch_layout;
    AVChannelLayout out = in;
    const int channels = static_cast<int>(m_description->audio.channelsPerFrame);
    if (frame.ch_layout.nb_channels != channels)
        av_channel_layout_default(&out, channels);

    SwrContext* resampler = nullptr;
    const int made = swr_alloc_set_opts2(
        &resampler, &out, AV_SAMPLE_FMT_S16, static_cast<int>(m_description->audio.sampleRate), &in,
        static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    m_resampler.reset(resampler);
    m_source = makeFrame();
    m_source->format = frame.format;
    m_source->sample_rate = frame.sample_rate;
    av_channel_layout_copy(&m_source->ch_layout, &frame.ch_layout);
    if (made < 0 || swr_init(resampler) < 0) {
        m_resampler.reset();
        return false;
    }
    return true;
}

bool SoundReader::convert(const Decoder& decoder, const AVFrame& frame, const Deliver& deliver) {
    if (frame.nb_samples <= 0 || frame.sample_rate <= 0 || frame.ch_layout.nb_channels <= 0 ||
        !prepare(frame))
        return true;
    const int channels = static_cast<int>(m_description->audio.channelsPerFrame);
    const int room = swr_get_out_samples(m_resampler.get(), frame.nb_samples);
    m_samples.resize(static_cast<std::size_t>(room) * static_cast<std::size_t>(channels));
    auto* out = reinterpret_cast<std::uint8_t*>(m_samples.data());
    const int count = swr_convert(m_resampler.get(), &out, room,
                                  const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples);

    const CMTime start = decoder.time(frame);
    const auto rate = static_cast<std::int32_t>(m_description->audio.sampleRate);
    for (int done = 0; done < count; done += samplesPerBuffer) {
        const int size = std::min(samplesPerBuffer, count - done);
        const CMTime time = CMTimeAdd(start, CMTimeMake(done, rate));
        if (!deliver(piece(m_samples.data() + static_cast<std::ptrdiff_t>(done) * channels, size, time)))
            return false;
    }
    return true;
}

CMSampleBufferRef SoundReader::piece(const std::int16_t* samples, int count, const CMTime& time) const {
    const std::size_t size = static_cast<std::size_t>(count) * m_description->audio.bytesPerFrame;
    auto block = std::make_shared<CMBlockBuffer>(size);
    std::memcpy(block->bytes().data(), samples, size);
    const auto rate = static_cast<std::int32_t>(m_description->audio.sampleRate);
    const CMSampleTimingInfo timing{CMTimeMake(1, rate), time, kCMTimeInvalid};
    const std::size_t sampleSize = m_description->audio.bytesPerFrame;
    CMSampleBufferRef sample;
    CMSampleBufferCreate(std::move(block), m_description, count, {&timing, 1}, {&sampleSize, 1}, &sample);
    return sample;
}

} // namespace anadrome::libav
