#include "Tests/Support/SoundMeasure.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace anadrome::testing_support {

namespace {

constexpr double kSilenceDecibels = -200;

std::optional<std::vector<double>> stretchOf(const Sound& sound, int channel, double from, double length) {
    const auto first = std::llround((from - sound.firstSampleSeconds) * sound.sampleRate);
    const auto count = std::llround(length * sound.sampleRate);
    const auto available =
        sound.channelCount ? static_cast<std::int64_t>(sound.samples.size()) / sound.channelCount : 0;
    if (channel >= sound.channelCount || first < 0 || count < 1 || first + count > available)
        return std::nullopt;
    std::vector<double> stretch;
    stretch.reserve(static_cast<std::size_t>(count));
    for (std::int64_t index = first; index < first + count; ++index)
        stretch.push_back(sound.samples[static_cast<std::size_t>(index * sound.channelCount + channel)]);
    return stretch;
}

double decibels(const std::vector<double>& stretch) {
    double power = 0;
    for (const double sample : stretch)
        power += sample * sample;
    power /= static_cast<double>(stretch.size());
    return power > 0 ? std::max(kSilenceDecibels, 10 * std::log10(power)) : kSilenceDecibels;
}

} // namespace

double Sound::seconds() const {
    if (!sampleRate || !channelCount)
        return 0;
    return static_cast<double>(samples.size()) / channelCount / sampleRate;
}

std::optional<double> toneIn(const Sound& sound, int channel, double fromSecond, double lengthSeconds) {
    const auto stretch = stretchOf(sound, channel, fromSecond, lengthSeconds);
    constexpr double kSilentBelow = -80;
    if (!stretch || decibels(*stretch) < kSilentBelow)
        return std::nullopt;
    // A rise through zero counts only after a real dip, so that noise doesn't.
    const double dip = -0.3 * *std::ranges::max_element(*stretch);
    bool hasDipped = false;
    std::vector<double> rises;
    for (std::size_t i = 1; i < stretch->size(); ++i) {
        const double before = (*stretch)[i - 1];
        const double after = (*stretch)[i];
        hasDipped |= before < dip;
        if (hasDipped && before < 0 && after >= 0) {
            rises.push_back(static_cast<double>(i) - after / (after - before));
            hasDipped = false;
        }
    }
    if (rises.size() < 2)
        return std::nullopt;
    return static_cast<double>(rises.size() - 1) * sound.sampleRate / (rises.back() - rises.front());
}

std::optional<double> level(const Sound& sound, int channel, double fromSecond, double lengthSeconds) {
    const auto stretch = stretchOf(sound, channel, fromSecond, lengthSeconds);
    return stretch ? std::optional(decibels(*stretch)) : std::nullopt;
}

} // namespace anadrome::testing_support
