#pragma once

#include <optional>
#include <vector>

namespace anadrome::testing_support {

/// Decoded sound: interleaved samples, 1.0 is full scale.
struct Sound {
    int sampleRate = 0;
    int channelCount = 0;
    double firstSampleSeconds = 0; ///< when the first sample is heard
    std::vector<float> samples = {};

    double seconds() const;
};

/// The pitch, in hertz, of a stretch of one channel that sounds a single tone; times are presentation times.
/// Nothing when the stretch reaches beyond the sound or is silent.
std::optional<double> toneIn(const Sound& sound, int channel, double fromSecond, double lengthSeconds);

/// The root mean square of a stretch of one channel in decibels below full scale, -200 for silence.
std::optional<double> level(const Sound& sound, int channel, double fromSecond, double lengthSeconds);

} // namespace anadrome::testing_support
