#include "Tests/Support/LumaPicture.h"

#include "Tests/Support/MovieFile.h"

#include <cstdlib>

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
    std::int64_t sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            sum += std::abs(a.at(x, y) - b.at(x, y));
    return static_cast<double>(sum) / (a.width() * a.height());
}

} // namespace anadrome::testing_support
