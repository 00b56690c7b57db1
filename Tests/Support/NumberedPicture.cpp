#include "Tests/Support/NumberedPicture.h"
#include "Tests/Support/PictureLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>

namespace anadrome::testing_support {

namespace {

constexpr int kGlyphColumns = 5;
constexpr int kGlyphRows = 7;

/// The ten digits, seven rows of five dots each; the highest of the five bits is the left dot.
constexpr std::array<std::array<unsigned, kGlyphRows>, 10> kDigits = {{
    {0x0e, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0e},
    {0x04, 0x0c, 0x04, 0x04, 0x04, 0x04, 0x0e},
    {0x0e, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1f},
    {0x1f, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0e},
    {0x02, 0x06, 0x0a, 0x12, 0x1f, 0x02, 0x02},
    {0x1f, 0x10, 0x1e, 0x01, 0x01, 0x11, 0x0e},
    {0x06, 0x08, 0x10, 0x1e, 0x11, 0x11, 0x0e},
    {0x1f, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08},
    {0x0e, 0x11, 0x11, 0x0e, 0x11, 0x11, 0x0e},
    {0x0e, 0x11, 0x11, 0x0f, 0x01, 0x02, 0x0c},
}};

void drawGlyph(Canvas& canvas, std::size_t digit, int left, int top, int dot, const CodeValues& ink) {
    for (int row = 0; row < kGlyphRows; ++row)
        for (int column = 0; column < kGlyphColumns; ++column)
            if (kDigits[digit][static_cast<std::size_t>(row)] >> (kGlyphColumns - 1 - column) & 1u) {
                const int x = left + column * dot;
                const int y = top + row * dot;
                canvas.fill({x, y, x + dot, y + dot}, ink);
            }
}

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
    drawDigits(canvas, number);
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

void NumberedPicture::drawDigits(Canvas& canvas, int number) const {
    const std::string text = std::to_string(number);
    const PixelRect band = toPixels(kDigitsBand, canvas.width(), canvas.height());
    const int columns = static_cast<int>(std::max<std::size_t>(4, text.size())) * (kGlyphColumns + 1);
    const int dot = std::min((band.right - band.left) / columns, (band.bottom - band.top) / (kGlyphRows + 2));
    if (dot < 2)
        return;
    const int width = static_cast<int>(text.size()) * (kGlyphColumns + 1) * dot;
    const int left = (band.left + band.right - width) / 2;
    canvas.fill({left - dot, band.top, left + width, band.top + (kGlyphRows + 2) * dot},
                colour(0.1, 0.1, 0.1));
    for (std::size_t place = 0; place < text.size(); ++place)
        drawGlyph(canvas, static_cast<std::size_t>(text[place] - '0'),
                  left + static_cast<int>(place) * (kGlyphColumns + 1) * dot, band.top + dot, dot,
                  colour(1, 1, 1));
}

void NumberedPicture::drawCorners(Canvas& canvas) const {
    const std::array<CodeValues, 4> colours = {colour(1, 0, 0), colour(0, 1, 0), colour(0, 0, 1),
                                               colour(1, 1, 0)};
    for (std::size_t corner = 0; corner < kCorners.size(); ++corner)
        canvas.fill(toPixels(kCorners[corner], canvas.width(), canvas.height()), colours[corner]);
}

void NumberedPicture::drawMotion(Canvas& canvas, int number) const {
    const PixelRect band = toPixels(kMotionBand, canvas.width(), canvas.height());
    const double radius = (band.bottom - band.top) * 0.3;
    const double angle = 2 * std::numbers::pi * number / 60;
    const double reachX = (band.right - band.left) / 2.0 - radius;
    const double reachY = (band.bottom - band.top) / 2.0 - radius;
    canvas.fillDisc({(band.left + band.right) / 2.0 + reachX * std::cos(angle),
                     (band.top + band.bottom) / 2.0 + reachY * std::sin(angle), radius},
                    colour(0.9, 0.6, 0.2));
}

} // namespace anadrome::testing_support
