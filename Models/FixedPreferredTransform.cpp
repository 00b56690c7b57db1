#include "Models/FixedPreferredTransform.h"

namespace anadrome {

CGAffineTransform fixedPreferredTransform(const AVAssetTrack& track) {
    CGAffineTransform transform = track.preferredTransform();
    const auto [width, height] = track.naturalSize();
    const struct {
        double a, b, c, d, tx, ty;
    } orientations[] = {
        {1, 0, 0, 1, 0, 0},            // upright
        {1, 0, 0, -1, 0, height},      // flipped vertically
        {-1, 0, 0, 1, width, 0},       // flipped horizontally
        {-1, 0, 0, -1, width, height}, // upside down
        {0, -1, 1, 0, 0, width},       // quarter turn
        {0, 1, -1, 0, height, 0},      // quarter turn the other way
        {0, 1, 1, 0, 0, 0},            // transposed
        {0, -1, -1, 0, height, width}, // transposed the other way
    };
    for (const auto& o : orientations)
        if (transform.a == o.a && transform.b == o.b && transform.c == o.c && transform.d == o.d) {
            transform.tx = o.tx;
            transform.ty = o.ty;
        }
    return transform;
}

} // namespace anadrome
