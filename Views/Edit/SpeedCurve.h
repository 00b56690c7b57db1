#pragma once

#include <cmath>

namespace anadrome {

/// What a speed slider's position, from 0 to 1, means: 0.1 to 10 in steps of 0.1. Two straight pieces meet at
/// 1.0 in the middle, so that slow speeds are as easy to set as fast ones.
inline double speedAtPosition(float position) {
    const double v = position;
    const double speed = v < 0.5 ? v * 1.8 + 0.1 : v * 18.0 - 8.0;
    return std::round(speed * 10) / 10;
}

/// The position that means the speed.
inline float positionOfSpeed(double speed) {
    return static_cast<float>(speed < 1 ? (speed - 0.1) / 1.8 : (speed + 8.0) / 18.0);
}

} // namespace anadrome
