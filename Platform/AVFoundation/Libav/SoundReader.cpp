#include "Platform/AVFoundation/Libav/SoundReader.h"

#include "Platform/AVFoundation/Libav/PcmBuffers.h"
#include "Platform/AVFoundation/Libav/Resampler.h"

#include <algorithm>
#include <span>

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace anadrome::libav {

namespace {

constexpr int samplesPerBuffer = 1024;

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
        m_description = describePcm(frame.sample_rate, frame.ch_layout.nb_channels);
    const int channels = static_cast<int>(m_description->audio.channelsPerFrame);
    const SoundForm from{frame.ch_layout, static_cast<AVSampleFormat>(frame.format), frame.sample_rate};
    const bool sameChannels = frame.ch_layout.nb_channels == channels;
    m_resampler = makeResampler(from, {sameChannels ? frame.ch_layout : usualLayout(channels),
                                       AV_SAMPLE_FMT_S16, static_cast<int>(m_description->audio.sampleRate)});
    m_source = makeFrame();
    m_source->format = frame.format;
    m_source->sample_rate = frame.sample_rate;
    av_channel_layout_copy(&m_source->ch_layout, &frame.ch_layout);
    return m_resampler != nullptr;
}

bool SoundReader::convert(const CMTime& start, const AVFrame& frame, const Deliver& deliver) {
    if (frame.nb_samples <= 0 || frame.sample_rate <= 0 || frame.ch_layout.nb_channels <= 0 ||
        !prepare(frame))
        return true;
    const int channels = static_cast<int>(m_description->audio.channelsPerFrame);
    const int room = swr_get_out_samples(m_resampler.get(), frame.nb_samples);
    m_samples.resize(static_cast<std::size_t>(room) * static_cast<std::size_t>(channels));
    auto* out = reinterpret_cast<std::uint8_t*>(m_samples.data());
    const int count = swr_convert(m_resampler.get(), &out, room,
                                  const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples);

    const auto rate = static_cast<std::int32_t>(m_description->audio.sampleRate);
    for (int done = 0; done < count; done += samplesPerBuffer) {
        const int size = std::min(samplesPerBuffer, count - done);
        const CMTime time = CMTimeAdd(start, CMTimeMake(done, rate));
        const std::span piece(m_samples.data() + static_cast<std::ptrdiff_t>(done) * channels,
                              static_cast<std::size_t>(size) * static_cast<std::size_t>(channels));
        if (!deliver(makePcmBuffer(m_description, piece, time)))
            return false;
    }
    return true;
}

} // namespace anadrome::libav
