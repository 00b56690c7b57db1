#pragma once

#include "Desktop/Surfaces/PictureSurface.h"

#include <cmath>
#include <functional>

namespace anadrome::desktop {

/// Passes pictures on to a video sink, and tells beforehand what shape they have when they are upright: width
/// by height. Main thread only.
class ShapedSurface final : public PictureSink {
public:
    ShapedSurface(QVideoSink* sink, std::function<void(double aspect)> tell)
        : m_surface(sink), m_tell(std::move(tell)) {}

    void show(const ShownPicture& picture) override {
        const CGSize upright = CGSizeApplyAffineTransform(picture.naturalSize, picture.transform);
        if (upright.height != 0)
            m_tell(std::abs(upright.width / upright.height));
        m_surface.show(picture);
    }

private:
    PictureSurface m_surface;
    const std::function<void(double aspect)> m_tell;
};

} // namespace anadrome::desktop
