#pragma once

namespace anadrome {

using CGFloat = double;

struct CGPoint {
    CGFloat x = 0;
    CGFloat y = 0;
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    CGFloat width = 0;
    CGFloat height = 0;
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect&, const CGRect&) = default;
};

/// x' = a x + c y + tx, y' = b x + d y + ty, with y pointing down.
struct CGAffineTransform {
    CGFloat a = 1;
    CGFloat b = 0;
    CGFloat c = 0;
    CGFloat d = 1;
    CGFloat tx = 0;
    CGFloat ty = 0;
    friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

inline constexpr CGAffineTransform CGAffineTransformIdentity{};

CGPoint CGPointApplyAffineTransform(CGPoint point, const CGAffineTransform& transform);
/// The translation plays no part; a side may come out negative.
CGSize CGSizeApplyAffineTransform(CGSize size, const CGAffineTransform& transform);

} // namespace anadrome
