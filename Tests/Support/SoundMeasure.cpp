#include "Tests/Support/SoundMeasure.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>

namespace anadrome::testing_support {

namespace {

constexpr double kSilenceDecibels = -200;

using Spectrum = std::vector<std::complex<double>>;

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

/// The discrete Fourier transform, in place; the size is a power of two.
void transform(Spectrum& values) {
    const std::size_t size = values.size();
    for (std::size_t index = 1, mirrored = 0; index < size; ++index) {
        std::size_t bit = size >> 1;
        for (; mirrored & bit; bit >>= 1)
            mirrored ^= bit;
        mirrored ^= bit;
        if (index < mirrored)
            std::swap(values[index], values[mirrored]);
    }
    for (std::size_t half = 1; half < size; half *= 2) {
        const auto step = std::polar(1.0, -std::numbers::pi / static_cast<double>(half));
        for (std::size_t start = 0; start < size; start += 2 * half) {
            std::complex<double> twiddle = 1;
            for (std::size_t index = start; index < start + half; ++index, twiddle *= step) {
                const auto odd = twiddle * values[index + half];
                values[index + half] = values[index] - odd;
                values[index] += odd;
            }
        }
    }
}

/// The spectrum under a raised cosine window, padded to at least twice the length for a finer scale.
Spectrum windowedSpectrum(const std::vector<double>& stretch) {
    Spectrum values(std::bit_ceil(2 * stretch.size()));
    const double turn = 2 * std::numbers::pi / static_cast<double>(stretch.size());
    for (std::size_t index = 0; index < stretch.size(); ++index)
        values[index] = stretch[index] * (0.5 - 0.5 * std::cos(turn * static_cast<double>(index)));
    transform(values);
    return values;
}

/// The place of the peak between bins, from a parabola through the three highest logarithms.
double peakBin(const Spectrum& spectrum) {
    const auto size = [&](std::size_t bin) { return std::log(std::abs(spectrum[bin]) + 1e-30); };
    std::size_t peak = 1;
    for (std::size_t bin = 2; bin + 1 < spectrum.size() / 2; ++bin)
        if (std::norm(spectrum[bin]) > std::norm(spectrum[peak]))
            peak = bin;
    const double before = size(peak - 1);
    const double after = size(peak + 1);
    const double bend = before - 2 * size(peak) + after;
    return static_cast<double>(peak) + (bend < 0 ? 0.5 * (before - after) / bend : 0);
}

} // namespace

double Sound::seconds() const {
    if (!sampleRate || !channelCount)
        return 0;
    return static_cast<double>(samples.size()) / channelCount / sampleRate;
}

std::optional<double> dominantFrequency(const Sound& sound, int channel, double fromSecond,
                                        double lengthSeconds) {
    const auto stretch = stretchOf(sound, channel, fromSecond, lengthSeconds);
    constexpr double kSilentBelow = -80;
    if (!stretch || decibels(*stretch) < kSilentBelow)
        return std::nullopt;
    const Spectrum spectrum = windowedSpectrum(*stretch);
    return peakBin(spectrum) * sound.sampleRate / static_cast<double>(spectrum.size());
}

std::optional<double> level(const Sound& sound, int channel, double fromSecond, double lengthSeconds) {
    const auto stretch = stretchOf(sound, channel, fromSecond, lengthSeconds);
    return stretch ? std::optional(decibels(*stretch)) : std::nullopt;
}

} // namespace anadrome::testing_support
