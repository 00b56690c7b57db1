#include "Tests/Support/LumaPicture.h"

#include "Tests/Support/MovieFile.h"
#include "Tests/Support/MovieReader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <numeric>

namespace anadrome::testing_support {

namespace {

/// The sum of the squares of the pixels' differences.
double squaredDifference(const LumaPicture& a, const LumaPicture& b) {
    return std::transform_reduce(a.samples.begin(), a.samples.end(), b.samples.begin(), 0.0, std::plus(),
                                 [](int x, int y) { return (x - y) * (x - y); });
}

} // namespace

int LumaPicture::at(int x, int y) const {
    return samples.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x));
}

LumaPicture LumaPicture::topLeft(int partWidth, int partHeight) const {
    LumaPicture part{partWidth, partHeight};
    for (int y = 0; y < partHeight; ++y)
        for (int x = 0; x < partWidth; ++x)
            part.samples.push_back(static_cast<std::uint8_t>(at(x, y)));
    return part;
}

LumaPicture lumaOf(const AVFrame& frame) {
    const int depth = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format))->comp[0].depth;
    LumaPicture picture{frame.width, frame.height};
    picture.samples.reserve(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* row = frame.data[0] + std::ptrdiff_t{y} * frame.linesize[0];
        if (depth == 8) {
            picture.samples.insert(picture.samples.end(), row, row + frame.width);
            continue;
        }
        const auto* wide = reinterpret_cast<const std::uint16_t*>(row);
        const int half = 1 << (depth - 9);
        std::transform(wide, wide + frame.width, std::back_inserter(picture.samples), [&](int sample) {
            return static_cast<std::uint8_t>(std::min(255, (sample + half) >> (depth - 8)));
        });
    }
    return picture;
}

double meanLuma(const LumaPicture& picture, const AVFrame& frame) {
    const double sum = std::accumulate(picture.samples.begin(), picture.samples.end(), 0.0);
    const double mean = sum / static_cast<double>(picture.samples.size());
    const std::string format = av_get_pix_fmt_name(static_cast<AVPixelFormat>(frame.format));
    const bool isFullRange = frame.color_range == AVCOL_RANGE_JPEG || format.starts_with("yuvj");
    return isFullRange ? 16 + mean * 219 / 255 : mean;
}

std::vector<LumaPicture> lumaPictures(const std::string& path) {
    std::vector<LumaPicture> pictures;
    forEachVideoFrame(path, [&](const AVFrame& frame, double) { pictures.push_back(lumaOf(frame)); });
    return pictures;
}

double meanDifference(const LumaPicture& a, const LumaPicture& b) {
    return std::transform_reduce(a.samples.begin(), a.samples.end(), b.samples.begin(), 0.0, std::plus(),
                                 [](int x, int y) { return std::abs(x - y); }) /
           static_cast<double>(a.samples.size());
}

std::optional<double> reversedPsnr(const std::string& source, const std::string& output) {
    constexpr double kSamePictures = 100;
    const std::int64_t step = std::max<std::int64_t>(readMovieHeaders(source).video.at(0).frameCount / 30, 1);
    std::vector<LumaPicture> kept;
    std::int64_t index = 0;
    forEachVideoFrame(source, [&](const AVFrame& frame, double) {
        if (index++ % step == 0)
            kept.push_back(lumaOf(frame));
    });
    double error = 0;
    double pixels = 0;
    bool fits = true;
    forEachVideoFrame(output, [&](const AVFrame& frame, double) {
        if (!fits || --index < 0 || index % step != 0)
            return;
        const LumaPicture& before = kept.at(static_cast<std::size_t>(index / step));
        const LumaPicture after = lumaOf(frame);
        fits = before.width == after.width && before.height == after.height;
        if (fits) {
            error += squaredDifference(before, after);
            pixels += before.width * before.height;
        }
    });
    if (!fits || index != 0 || pixels == 0)
        return std::nullopt;
    return error > 0 ? std::min(kSamePictures, 10 * std::log10(255.0 * 255.0 * pixels / error))
                     : kSamePictures;
}

} // namespace anadrome::testing_support
