#include "Desktop/Items/PlayerItem.h"

#include "Desktop/Items/ShapedSurface.h"
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

void PlayerItem::play() {
    if (!isPlaying())
        tap();
}

void PlayerItem::pause() {
    if (isPlaying())
        tap();
}

void PlayerItem::step(SliderItem* bar, int pictures) {
    pause();
    bar->put(bar->value() + pictures * frameSeconds());
}

double PlayerItem::frameSeconds() const {
    constexpr double usual = 1.0 / 30;
    const auto player = this->player();
    const auto item = player ? player->currentItem() : nullptr;
    if (!item || item->status() != AVPlayerItemStatus::readyToPlay)
        return usual;
    const auto tracks = item->asset()->tracksWithMediaType(AVMediaTypeVideo);
    const float rate = tracks.empty() ? 0 : tracks.front()->nominalFrameRate();
    return rate > 0 ? 1 / rate : usual;
}

std::shared_ptr<AVPlayer> PlayerItem::player() const {
    return ask<AVPlayerLayerView>([](AVPlayerLayerView& view) { return view.layer().player(); });
}

bool PlayerItem::isPlaying() const {
    const auto player = this->player();
    return player && player->rate() != 0;
}

} // namespace anadrome::desktop
