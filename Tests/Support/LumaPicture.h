#pragma once

#include "Tests/Support/Libav.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace anadrome::testing_support {

/// The luma of a picture in 8 bits, to be looked at pixel by pixel.
struct LumaPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> samples = {};

    int at(int x, int y) const;
    /// The top left part of it.
    LumaPicture topLeft(int partWidth, int partHeight) const;
};

/// The luma of a decoded YUV frame as it is stored.
LumaPicture lumaOf(const AVFrame& frame);

/// The mean of that on the scale where black is 16 and white is 235, whatever the frame's range.
double meanLuma(const LumaPicture& picture, const AVFrame& frame);

/// All pictures of a movie's first video track, in the order of presentation.
std::vector<LumaPicture> lumaPictures(const std::string& path);

/// How far the pixels of two pictures of one size lie apart on average.
double meanDifference(const LumaPicture& a, const LumaPicture& b);

/// The luma peak signal-to-noise ratio, in decibels, between frame i of the one movie and frame N - 1 - i of
/// the other at 8 bits; 100 when they are the same. Nothing when sizes or frame counts differ. Of long movies
/// some thirty frames are compared, spread evenly.
std::optional<double> reversedPsnr(const std::string& source, const std::string& output);

} // namespace anadrome::testing_support
