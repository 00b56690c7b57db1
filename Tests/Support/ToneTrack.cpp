#include "Tests/Support/ToneTrack.h"

#include <cmath>
#include <numbers>

namespace anadrome::testing_support {

double toneFrequency(int second, int channel, int channelCount, int track) {
    const double base = 300 + 100 * (second % 20) + 25 * track;
    if (channelCount > 2)
        return base + 50 * channel;
    return channel == 1 ? 2 * base : base;
}

ToneTrack::ToneTrack(int sampleRate, int channelCount, int track)
    : sampleRate_(sampleRate), channelCount_(channelCount), track_(track),
      phases_(static_cast<std::size_t>(channelCount)) {}

std::vector<float> ToneTrack::next(int sampleCount) {
    std::vector<float> samples;
    samples.reserve(static_cast<std::size_t>(sampleCount) * phases_.size());
    for (int sample = 0; sample < sampleCount; ++sample, ++position_) {
        const int second = static_cast<int>(position_ / sampleRate_);
        for (int channel = 0; channel < channelCount_; ++channel) {
            double& phase = phases_[static_cast<std::size_t>(channel)];
            samples.push_back(kToneAmplitude * static_cast<float>(std::sin(phase)));
            phase +=
                2 * std::numbers::pi * toneFrequency(second, channel, channelCount_, track_) / sampleRate_;
            phase = std::fmod(phase, 2 * std::numbers::pi);
        }
    }
    return samples;
}

} // namespace anadrome::testing_support
