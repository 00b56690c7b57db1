#pragma once

#include <optional>
#include <string>

namespace anadrome::testing_support {

/// The luma peak signal-to-noise ratio, in decibels, between frame i of the one movie and frame N - 1 - i of
/// the other at 8 bits; 100 when they are the same. Nothing when sizes or frame counts differ. Of long movies
/// some thirty frames are compared, spread evenly.
std::optional<double> reversedPsnr(const std::string& source, const std::string& output);

} // namespace anadrome::testing_support
