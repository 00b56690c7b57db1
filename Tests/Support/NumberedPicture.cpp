#include "Tests/Support/NumberedPicture.h"
#include "Tests/Support/PictureLayout.h"

#include <array>
#include <cmath>
#include <numbers>

namespace anadrome::testing_support {

namespace {

bool isHighDynamicRange(ColourPreset colour) {
    return colour == ColourPreset::Hlg || colour == ColourPreset::Pq;
}

} // namespace

NumberedPicture::NumberedPicture(const ClipOptions& options, AVPixelFormat format, bool fullRange)
    : coding_{tagsOf(options.colour).matrix, fullRange, av_pix_fmt_desc_get(format)->comp[0].depth},
      white_(isHighDynamicRange(options.colour) ? 0.65 : 1.0), isRamp_(options.detail == Detail::Ramp) {
    if (options.detail == Detail::Rich)
        texture_.emplace(options.width, options.height, format, colour(0, 0, 0), colour(1, 1, 1));
}

CodeValues NumberedPicture::colour(double red, double green, double blue) const {
    return codeValues({white_ * red, white_ * green, white_ * blue}, coding_);
}

void NumberedPicture::draw(AVFrame& frame, int number) const {
    Canvas canvas(frame);
    if (texture_)
        texture_->draw(canvas, number);
    else if (isRamp_)
        drawRamp(canvas);
    else
        canvas.fill({0, 0, canvas.width(), canvas.height()}, colour(0.4, 0.4, 0.4));
    drawMotion(canvas, number);
    drawCode(canvas, number);
    drawCorners(canvas);
}

void NumberedPicture::drawRamp(Canvas& canvas) const {
    for (int x = 0; x < canvas.width(); ++x) {
        const double grey = static_cast<double>(x) / (canvas.width() - 1);
        canvas.fill({x, 0, x + 1, canvas.height()}, codeValues({grey, grey, grey}, coding_));
    }
}

void NumberedPicture::drawCode(Canvas& canvas, int number) const {
    const FrameCode code = frameCode(number);
    const CodeValues black = colour(0, 0, 0);
    const CodeValues white = colour(1, 1, 1);
    for (int cell = 0; cell < kCodeCells; ++cell)
        canvas.fill(toPixels(codeCell(cell), canvas.width(), canvas.height()),
                    code[static_cast<std::size_t>(cell)] ? white : black);
}

void NumberedPicture::drawCorners(Canvas& canvas) const {
    const std::array<CodeValues, 4> colours = {colour(1, 0, 0), colour(0, 1, 0), colour(0, 0, 1),
                                               colour(1, 1, 0)};
    for (std::size_t corner = 0; corner < kCorners.size(); ++corner)
        canvas.fill(toPixels(kCorners[corner], canvas.width(), canvas.height()), colours[corner]);
}

void NumberedPicture::drawMotion(Canvas& canvas, int number) const {
    const PixelRect band = toPixels(kMotionBand, canvas.width(), canvas.height());
    const int half = (band.bottom - band.top) * 3 / 10;
    const double angle = 2 * std::numbers::pi * number / 60;
    const double reachX = (band.right - band.left) / 2.0 - half;
    const double reachY = (band.bottom - band.top) / 2.0 - half;
    const int x = static_cast<int>((band.left + band.right) / 2.0 + reachX * std::cos(angle));
    const int y = static_cast<int>((band.top + band.bottom) / 2.0 + reachY * std::sin(angle));
    canvas.fill({x - half, y - half, x + half, y + half}, colour(0.9, 0.6, 0.2));
}

} // namespace anadrome::testing_support
