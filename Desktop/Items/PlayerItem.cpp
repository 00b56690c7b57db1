#include "Desktop/Items/PlayerItem.h"

#include "Desktop/Items/ShapedSurface.h"
#include "Platform/AVKit/AVPlayerLayerView.h"
#include "Platform/UIKit/UITapGestureRecognizer.h"

#include <QPointer>

namespace anadrome::desktop {

void PlayerItem::setAspect(double aspect) {
    if (m_aspect == aspect)
        return;
    m_aspect = aspect;
    Q_EMIT aspectChanged();
}

void PlayerItem::showOn(QVideoSink* sink, const QSizeF& pixels) {
    act<AVPlayerLayerView>([&](AVPlayerLayerView& view) {
        const auto surface = std::make_shared<ShapedSurface>(sink, [item = QPointer(this)](double aspect) {
            if (item)
                item->setAspect(aspect);
        });
        view.layer().setSurface(surface, {pixels.width(), pixels.height()});
    });
}

void PlayerItem::leave() {
    act<AVPlayerLayerView>([](AVPlayerLayerView& view) { view.layer().setSurface(nullptr, {}); });
}

void PlayerItem::tap() {
    act<UIView>([](UIView& view) {
        for (const auto& recognizer : view.gestureRecognizers())
            if (const auto tap = std::dynamic_pointer_cast<UITapGestureRecognizer>(recognizer))
                tap->tap();
    });
}

} // namespace anadrome::desktop
