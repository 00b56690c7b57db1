#include "Desktop/Camera/LivePictures.h"

#include "Desktop/Items/ShapedSurface.h"

#include <QPointer>

namespace anadrome::desktop {

void LivePictures::showOn(QVideoSink* sink, const QSizeF&) {
    m_surface = std::make_shared<ShapedSurface>(sink, [self = QPointer(this)](double aspect) {
        if (self)
            self->setAspect(aspect);
    });
    Q_EMIT surfaceChanged();
}

void LivePictures::leave() {
    m_surface.reset();
    Q_EMIT surfaceChanged();
}

void LivePictures::setAspect(double aspect) {
    if (m_aspect == aspect)
        return;
    m_aspect = aspect;
    Q_EMIT aspectChanged();
}

} // namespace anadrome::desktop
