#pragma once

#include "Tests/Support/Canvas.h"

#include <cstdint>
#include <vector>

namespace anadrome::testing_support {

/// A moving background that is as hard to code as camera footage: a panning texture with detail at every
/// scale, pieces of it that drift another way, and fresh grain on every frame. Of 8 bits.
class RichTexture {
public:
    RichTexture(int width, int height, AVPixelFormat format, const CodeValues& black,
                const CodeValues& white);

    void draw(Canvas& canvas, int number) const;

private:
    void addGrain(Canvas& canvas, int number) const;

    int reach_; ///< how far the texture reaches beyond the picture, to each side
    FramePtr texture_;
    std::vector<std::int16_t> grain_;
};

} // namespace anadrome::testing_support
