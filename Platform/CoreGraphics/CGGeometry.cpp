#include "Platform/CoreGraphics/CGGeometry.h"

namespace anadrome {

CGPoint CGPointApplyAffineTransform(CGPoint point, const CGAffineTransform& t) {
    return {t.a * point.x + t.c * point.y + t.tx, t.b * point.x + t.d * point.y + t.ty};
}

CGSize CGSizeApplyAffineTransform(CGSize size, const CGAffineTransform& t) {
    return {t.a * size.width + t.c * size.height, t.b * size.width + t.d * size.height};
}

} // namespace anadrome
