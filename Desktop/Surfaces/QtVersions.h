#pragma once

#include <QVideoFrame>

/// Every difference between the versions of Qt that the project builds with, 6.4 and later.
namespace anadrome {

/// The clockwise turn that shows a frame upright: 0, 90, 180 or 270 degrees.
inline int rotationOf(const QVideoFrame& frame) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    return static_cast<int>(frame.rotation());
#else
    return static_cast<int>(frame.rotationAngle());
#endif
}

inline void setRotation(QVideoFrame& frame, int degrees) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    frame.setRotation(static_cast<QtVideo::Rotation>(degrees));
#else
    frame.setRotationAngle(static_cast<QVideoFrame::RotationAngle>(degrees));
#endif
}

} // namespace anadrome
