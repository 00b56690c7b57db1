#include "Tests/Support/LumaPicture.h"

#include "Tests/Support/MovieFile.h"

#include <cstdlib>
#include <functional>
#include <numeric>

namespace anadrome::testing_support {

LumaPicture::LumaPicture(const LumaView& view) : m_width(view.width), m_height(view.height) {
    for (int y = 0; y < m_height; ++y) {
        const std::uint8_t* row = view.data + y * view.stride;
        m_samples.insert(m_samples.end(), row, row + m_width);
    }
}

int LumaPicture::at(int x, int y) const {
    return m_samples.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                        static_cast<std::size_t>(x));
}

LumaPicture LumaPicture::topLeft(int width, int height) const {
    LumaView part = view();
    part.width = width;
    part.height = height;
    return LumaPicture(part);
}

std::optional<int> LumaPicture::number() const {
    return readFrameNumber(view());
}

std::vector<LumaPicture> lumaPictures(const std::string& path) {
    std::vector<LumaPicture> pictures;
    forEachVideoFrame(path,
                      [&](const AVFrame& frame, double) { pictures.emplace_back(FrameLuma(frame).view()); });
    return pictures;
}

double meanDifference(const LumaPicture& a, const LumaPicture& b) {
    return std::transform_reduce(a.samples().begin(), a.samples().end(), b.samples().begin(), 0.0,
                                 std::plus(), [](int x, int y) { return std::abs(x - y); }) /
           static_cast<double>(a.samples().size());
}

double squaredDifference(const LumaPicture& a, const LumaPicture& b) {
    return std::transform_reduce(a.samples().begin(), a.samples().end(), b.samples().begin(), 0.0,
                                 std::plus(), [](int x, int y) { return (x - y) * (x - y); });
}

} // namespace anadrome::testing_support
