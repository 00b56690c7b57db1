#include "Platform/AVFoundation/Render/SegmentSound.h"

#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Libav/Resampler.h"

#include <algorithm>
#include <utility>

namespace anadrome::render {

namespace {

/// Sound that is off by less follows on where it is: no click for a rounding error.
constexpr double smallestGap = 0.02;

/// Two whole numbers in the ratio, as the resampler takes rates.
AVRational ratesInRatio(double ratio) {
    return av_d2q(ratio, 1 << 26);
}

} // namespace

SegmentSound::~SegmentSound() {
    if (m_pipeline)
        m_pipeline->cancel();
}

std::optional<NSError> SegmentSound::addNext(std::span<float> samples) {
    if (!m_pipeline)
        if (std::optional<NSError> error = open())
            return error;
    while (m_waiting.size() < samples.size() && !m_ended)
        if (std::optional<NSError> error = feed())
            return error;
    const auto count = static_cast<std::ptrdiff_t>(std::min(samples.size(), m_waiting.size()));
    std::transform(m_waiting.begin(), m_waiting.begin() + count, samples.begin(), samples.begin(),
                   std::plus<>());
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + count);
    return std::nullopt;
}

std::optional<NSError> SegmentSound::open() {
    Result<std::shared_ptr<libav::TrackPipeline>> started =
        libav::TrackPipeline::start(m_segment.source, {}, m_segment.timeMapping.source.start);
    if (!started)
        return started.error();
    m_pipeline = *started;
    return std::nullopt;
}

std::optional<NSError> SegmentSound::feed() {
    if (m_silenceLeft > 0)
        return resampleSilence();
    if (m_behindSilence)
        return resampleFrom(std::exchange(m_behindSilence, nullptr), 0);
    if (const CMSampleBufferRef sound = m_pipeline->next())
        return take(sound);
    m_ended = true;
    if (std::optional<NSError> error = m_pipeline->error())
        return error;
    return m_resampler ? resample(nullptr, 0) : std::nullopt;
}

std::optional<NSError> SegmentSound::prepare(const AudioStreamBasicDescription& format) {
    if (m_resampler)
        return std::nullopt;
    m_format = format;
    const auto& [source, target] = m_segment.timeMapping;
    const double speed = CMTimeGetSeconds(source.duration) / CMTimeGetSeconds(target.duration);
    const AVRational rates = ratesInRatio(format.sampleRate * speed / m_sampleRate);
    m_resampler = libav::makeResampler(
        {libav::usualLayout(static_cast<int>(format.channelsPerFrame)), AV_SAMPLE_FMT_S16, rates.num},
        {libav::usualLayout(2), AV_SAMPLE_FMT_FLT, rates.den});
    return m_resampler ? std::nullopt : std::optional(makeAVError(AVErrorDecodeFailed));
}

/// Lays the sound where its time says, counted from the start of the stretch.
std::optional<NSError> SegmentSound::take(const CMSampleBufferRef& sound) {
    if (std::optional<NSError> error = prepare(CMSampleBufferGetFormatDescription(sound)->audio))
        return error;
    const CMTime start =
        CMTimeSubtract(CMSampleBufferGetPresentationTimeStamp(sound), m_segment.timeMapping.source.start);
    const auto rate = static_cast<std::int32_t>(m_format.sampleRate);
    const std::int64_t count = CMSampleBufferGetNumSamples(sound);
    std::int64_t skipped = 0;
    if (CMTIME_IS_NUMERIC(start)) {
        const std::int64_t gap =
            CMTimeConvertScale(start, rate, CMTimeRoundingMethod::Default).value - m_taken;
        const bool isNoticeable = static_cast<double>(std::abs(gap)) >= smallestGap * rate || m_taken == 0;
        if (isNoticeable && gap > 0) {
            // A damaged file may tell of any time.
            const CMTime length = m_segment.timeMapping.source.duration;
            const std::int64_t end = CMTimeConvertScale(length, rate, CMTimeRoundingMethod::Default).value;
            m_silenceLeft = std::min(gap, std::max<std::int64_t>(end - m_taken, 0));
            m_behindSilence = sound;
            return std::nullopt;
        }
        if (isNoticeable && gap < 0)
            skipped = std::min(-gap, count);
    }
    return resampleFrom(sound, skipped);
}

std::optional<NSError> SegmentSound::resampleFrom(const CMSampleBufferRef& sound, std::int64_t skipped) {
    const auto& bytes = CMSampleBufferGetDataBuffer(sound)->bytes();
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return resample(data + skipped * m_format.bytesPerFrame, CMSampleBufferGetNumSamples(sound) - skipped);
}

/// A block at a time, as it is asked for.
std::optional<NSError> SegmentSound::resampleSilence() {
    constexpr std::int64_t block = 4096;
    const std::int64_t count = std::min(m_silenceLeft, block);
    const std::vector<std::uint8_t> zeros(static_cast<std::size_t>(count) * m_format.bytesPerFrame);
    m_silenceLeft -= count;
    return resample(zeros.data(), count);
}

/// Without data: what the resampler still holds.
std::optional<NSError> SegmentSound::resample(const std::uint8_t* data, std::int64_t count) {
    if (data && count == 0)
        return std::nullopt;
    std::vector<float> made(static_cast<std::size_t>(
        2 * std::max(swr_get_out_samples(m_resampler.get(), static_cast<int>(count)), 0)));
    auto* out = reinterpret_cast<std::uint8_t*>(made.data());
    const int result = swr_convert(m_resampler.get(), &out, static_cast<int>(made.size() / 2),
                                   data ? &data : nullptr, static_cast<int>(count));
    if (result < 0)
        return makeAVError(AVErrorDecodeFailed);
    m_taken += count;
    m_waiting.insert(m_waiting.end(), made.begin(), made.begin() + 2 * result);
    return std::nullopt;
}

} // namespace anadrome::render
