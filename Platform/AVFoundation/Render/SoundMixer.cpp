#include "Platform/AVFoundation/Render/SoundMixer.h"

#include "Platform/AVFoundation/Libav/PcmBuffers.h"

#include <algorithm>
#include <cmath>

namespace anadrome::render {

namespace {

constexpr std::int64_t samplesPerBuffer = 1024;
/// Those that AAC has, up to the highest that a movie gets.
constexpr int sampleRates[] = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};

std::int16_t quantised(float sample) {
    return static_cast<std::int16_t>(std::lround(std::clamp(sample * 32768, -32768.0F, 32767.0F)));
}

} // namespace

int mixedSampleRate(std::span<const AVAssetTrackRef> tracks) {
    double highest = 0;
    for (const AVAssetTrackRef& track : tracks)
        for (const AVAssetTrackSegment& segment : track->segments())
            if (segment.source && !segment.source->formatDescriptions().empty())
                highest = std::max(highest, segment.source->formatDescriptions().front()->audio.sampleRate);
    const auto* enough = std::ranges::find_if(sampleRates, [&](int rate) { return rate >= highest; });
    return enough == std::end(sampleRates) ? *std::prev(enough) : *enough;
}

SoundMixer::SoundMixer(std::span<const AVAssetTrackRef> tracks, int sampleRate, const CMTime& length)
    : m_description(libav::describePcm(sampleRate, 2)),
      m_length(CMTimeConvertScale(length, sampleRate, CMTimeRoundingMethod::Default).value) {
    for (const AVAssetTrackRef& track : tracks)
        m_tracks.push_back(std::make_unique<SoundTrack>(track, sampleRate));
}

Result<CMSampleBufferRef> SoundMixer::next() {
    const std::int64_t count = std::min(samplesPerBuffer, m_length - m_position);
    if (count <= 0)
        return CMSampleBufferRef();
    std::vector<float> mixed(static_cast<std::size_t>(2 * count));
    for (const auto& track : m_tracks)
        if (std::optional<NSError> error = track->addNext(mixed))
            return *error;
    std::vector<std::int16_t> samples(mixed.size());
    std::ranges::transform(mixed, samples.begin(), quantised);
    const auto rate = static_cast<std::int32_t>(m_description->audio.sampleRate);
    const CMTime time = CMTimeMake(m_position, rate);
    m_position += count;
    return libav::makePcmBuffer(m_description, samples, time);
}

} // namespace anadrome::render
