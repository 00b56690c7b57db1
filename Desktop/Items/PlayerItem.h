#pragma once

#include "Desktop/Items/ControlItems.h"
#include "Platform/AVKit/AVPlayerLayerView.h"

#include <QSizeF>
#include <QVideoSink>

namespace anadrome::desktop {

/// The place of a player's pictures.
class PlayerItem : public anadrome::desktop::ViewItem {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    /// Width by height of the upright picture; that of most clips until there is one.
    Q_PROPERTY(double aspect READ aspect NOTIFY aspectChanged)

public:
    PlayerItem(const std::shared_ptr<AVPlayerLayerView>& view, QObject* parent) : ViewItem(view, parent) {}
    ~PlayerItem() override { leave(); }

    double aspect() const { return m_aspect; }
    void setAspect(double aspect);

    /// The pictures are shown on this sink from now on, at a size in pixels of the screen. The sink may go
    /// first.
    Q_INVOKABLE void showOn(QVideoSink* sink, const QSizeF& pixels);
    /// Nobody can see the pictures any more: none are made.
    Q_INVOKABLE void leave();
    /// The user's tap on the pictures.
    Q_INVOKABLE void tap();
    /// A tap, if that makes it play, or pause.
    Q_INVOKABLE void play();
    Q_INVOKABLE void pause();
    /// Pauses, and shows the picture so many further along the bar that tells where the player stands.
    Q_INVOKABLE void step(anadrome::desktop::SliderItem* bar, int pictures);

    /// How long a picture stands, in seconds; as in most clips until there is one.
    double frameSeconds() const;

Q_SIGNALS:
    void aspectChanged();

private:
    std::shared_ptr<AVPlayer> player() const;
    bool isPlaying() const;

    double m_aspect = 16.0 / 9;
};

} // namespace anadrome::desktop
