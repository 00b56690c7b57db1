#include "Platform/CoreGraphics/CGGeometry.h"

namespace anadrome {

CGPoint CGPointApplyAffineTransform(CGPoint point, const CGAffineTransform& t) {
    return {t.a * point.x + t.c * point.y + t.tx, t.b * point.x + t.d * point.y + t.ty};
}

CGSize CGSizeApplyAffineTransform(CGSize size, const CGAffineTransform& t) {
    return {t.a * size.width + t.c * size.height, t.b * size.width + t.d * size.height};
}

CGAffineTransform CGAffineTransformConcat(const CGAffineTransform& first, const CGAffineTransform& second) {
    const CGSize xAxis = CGSizeApplyAffineTransform({first.a, first.b}, second);
    const CGSize yAxis = CGSizeApplyAffineTransform({first.c, first.d}, second);
    const CGPoint origin = CGPointApplyAffineTransform({first.tx, first.ty}, second);
    return {xAxis.width, xAxis.height, yAxis.width, yAxis.height, origin.x, origin.y};
}

} // namespace anadrome
