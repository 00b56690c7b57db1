#include "Tests/Support/ReversedPsnr.h"

#include "Tests/Support/LumaPicture.h"
#include "Tests/Support/MovieFile.h"
#include "Tests/Support/MovieReader.h"

#include <algorithm>
#include <cmath>

namespace anadrome::testing_support {

std::optional<double> reversedPsnr(const std::string& source, const std::string& output) {
    constexpr double kSamePictures = 100;
    const std::int64_t step = std::max<std::int64_t>(readMovieHeaders(source).video.at(0).frameCount / 30, 1);
    std::vector<LumaPicture> kept;
    std::int64_t index = 0;
    forEachVideoFrame(source, [&](const AVFrame& frame, double) {
        if (index++ % step == 0)
            kept.emplace_back(FrameLuma(frame).view());
    });
    double error = 0;
    double pixels = 0;
    bool fits = true;
    forEachVideoFrame(output, [&](const AVFrame& frame, double) {
        if (!fits || --index < 0 || index % step != 0)
            return;
        const LumaPicture& before = kept.at(static_cast<std::size_t>(index / step));
        const LumaPicture after(FrameLuma(frame).view());
        fits = before.width() == after.width() && before.height() == after.height();
        if (fits) {
            error += squaredDifference(before, after);
            pixels += before.width() * before.height();
        }
    });
    if (!fits || index != 0 || pixels == 0)
        return std::nullopt;
    return error > 0 ? std::min(kSamePictures, 10 * std::log10(255.0 * 255.0 * pixels / error))
                     : kSamePictures;
}

} // namespace anadrome::testing_support
