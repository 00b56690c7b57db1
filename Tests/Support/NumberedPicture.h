#pragma once

#include "Tests/Support/ClipOptions.h"
#include "Tests/Support/RichTexture.h"

#include <optional>

namespace anadrome::testing_support {

/// Draws the pictures of a clip: the frame number as cells, a square going round, and four
/// coloured corners (red, green, blue, yellow in reading order) that tell which way up the picture is.
class NumberedPicture {
public:
    /// The format must be one that a Canvas can draw on. HDR presets keep white at two thirds of the signal.
    NumberedPicture(const ClipOptions& options, AVPixelFormat format, bool fullRange);

    void draw(AVFrame& frame, int number) const;

private:
    CodeValues colour(double red, double green, double blue) const;
    void drawRamp(Canvas& canvas) const;
    void drawCode(Canvas& canvas, int number) const;
    void drawCorners(Canvas& canvas) const;
    void drawMotion(Canvas& canvas, int number) const;

    SignalCoding coding_;
    double white_;
    bool isRamp_;
    std::optional<RichTexture> texture_;
};

} // namespace anadrome::testing_support
