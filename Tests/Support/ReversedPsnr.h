#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace anadrome::testing_support {

/// The luma peak signal-to-noise ratio, in decibels, between frame i of the one movie and frame N - 1 - i of
/// the other, over all frames at 8 bits; 100 when they are the same. Nothing when sizes or frame counts
/// differ. Long movies are compared in stretches of no more pictures than fit into the given memory.
std::optional<double> reversedPsnr(const std::string& source, const std::string& output,
                                   std::int64_t heldBytes = 256 << 20);

} // namespace anadrome::testing_support
