#include "Desktop/Surfaces/SoundSamples.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace anadrome {

std::vector<std::byte> sixteenBitBytes(std::span<const float> samples) {
    constexpr float fullScale = 32768;
    std::vector<std::byte> bytes(samples.size() * sizeof(std::int16_t));
    std::byte* to = bytes.data();
    for (const float sample : samples) {
        const float scaled =
            std::isnan(sample) ? 0 : std::clamp(sample * fullScale, -fullScale, fullScale - 1);
        const auto word = static_cast<std::int16_t>(std::lround(scaled));
        std::memcpy(to, &word, sizeof word);
        to += sizeof word;
    }
    return bytes;
}

} // namespace anadrome
