#pragma once

#include <cstdint>
#include <vector>

namespace anadrome::testing_support {

inline constexpr float kToneAmplitude = 0.5f;

/// The pitch, in hertz, that tells which second of a sound track is
/// heard, counted from the track's first sample.
///   base = 300 + 100 * (second mod 20), and 25 more on the second sound track (track 1);
///   mono and stereo: the left or only channel sounds the base, the right one an octave higher, 2 * base;
///   more channels: channel c sounds base + 50 * c. Compression takes this out of a low-frequency channel.
double toneFrequency(int second, int channel, int channelCount, int track = 0);

/// Makes the tones sample by sample; the wave runs on smoothly where the pitch changes.
class ToneTrack {
public:
    ToneTrack(int sampleRate, int channelCount, int track);

    /// The next samples, interleaved.
    std::vector<float> next(int sampleCount);

private:
    int sampleRate_;
    int channelCount_;
    int track_;
    std::int64_t position_ = 0;
    std::vector<double> phases_;
};

} // namespace anadrome::testing_support
