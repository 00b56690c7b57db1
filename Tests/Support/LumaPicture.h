#pragma once

#include "Tests/Support/PictureReading.h"

#include <string>
#include <vector>

namespace anadrome::testing_support {

/// The luma of a picture, to be looked at pixel by pixel.
class LumaPicture {
public:
    explicit LumaPicture(const LumaView& view);

    int width() const { return m_width; }
    int height() const { return m_height; }
    int at(int x, int y) const;

    /// The top left part of it.
    LumaPicture topLeft(int width, int height) const;
    std::optional<int> number() const;

    const std::vector<std::uint8_t>& samples() const { return m_samples; }

private:
    LumaView view() const { return {m_samples.data(), m_width, m_width, m_height}; }

    int m_width;
    int m_height;
    std::vector<std::uint8_t> m_samples;
};

/// All pictures of a movie's first video track as they are stored, in the order of presentation.
std::vector<LumaPicture> lumaPictures(const std::string& path);

/// How far the pixels of two pictures of one size lie apart on average.
double meanDifference(const LumaPicture& a, const LumaPicture& b);

/// The sum of the squares of those distances.
double squaredDifference(const LumaPicture& a, const LumaPicture& b);

} // namespace anadrome::testing_support
