#include "Desktop/Surfaces/PictureSurface.h"

#include "Desktop/Surfaces/PictureFrame.h"

namespace anadrome {

void PictureSurface::show(const ShownPicture& picture) {
    if (!m_sink)
        return;
    if (const QVideoFrame frame = frameWith(picture); frame.isValid())
        m_sink->setVideoFrame(frame);
}

} // namespace anadrome
