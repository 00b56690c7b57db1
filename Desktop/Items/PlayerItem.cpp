#include "Desktop/Items/PlayerItem.h"

#include "Desktop/Surfaces/PictureSurface.h"
#include "Platform/AVKit/AVPlayerLayerView.h"
#include "Platform/UIKit/UITapGestureRecognizer.h"

#include <QPointer>
#include <cmath>

namespace anadrome::desktop {

namespace {

/// Tells the item what shape the pictures have that it passes on.
class ShapedSurface final : public PictureSink {
public:
    ShapedSurface(PlayerItem* item, QVideoSink* sink) : m_item(item), m_surface(sink) {}

    void show(const ShownPicture& picture) override {
        const CGSize upright = CGSizeApplyAffineTransform(picture.naturalSize, picture.transform);
        if (m_item && upright.height != 0)
            m_item->setAspect(std::abs(upright.width / upright.height));
        m_surface.show(picture);
    }

private:
    const QPointer<PlayerItem> m_item;
    PictureSurface m_surface;
};

} // namespace

void PlayerItem::setAspect(double aspect) {
    if (m_aspect == aspect)
        return;
    m_aspect = aspect;
    Q_EMIT aspectChanged();
}

void PlayerItem::showOn(QVideoSink* sink, const QSizeF& pixels) {
    act<AVPlayerLayerView>([&](AVPlayerLayerView& view) {
        view.layer().setSurface(std::make_shared<ShapedSurface>(this, sink),
                                {pixels.width(), pixels.height()});
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
