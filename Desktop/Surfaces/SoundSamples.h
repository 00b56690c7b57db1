#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace anadrome {

/// The samples as 16-bit words in the machine's byte order, for devices that take no floats. What is louder
/// than full scale is clipped; no number is silence.
std::vector<std::byte> sixteenBitBytes(std::span<const float> samples);

} // namespace anadrome
