#pragma once

namespace anadrome {

/// What becomes of the pitch of sound that is played at another speed.
enum class AVAudioTimePitchAlgorithm {
    /// It follows the speed, as on a tape.
    varispeed,
};
inline constexpr AVAudioTimePitchAlgorithm AVAudioTimePitchAlgorithmVarispeed =
    AVAudioTimePitchAlgorithm::varispeed;

} // namespace anadrome
