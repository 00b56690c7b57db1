#pragma once

#include "Platform/AVFoundation/AVPlayer.h"
#include "Platform/AVFoundation/PictureSink.h"

namespace anadrome {

enum class AVLayerVideoGravity { resizeAspect, resizeAspectFill, resize };

/// Where a player's pictures are shown: joins a player and the surface that a front end gives to the layer.
/// Main thread only. A player shows itself on one layer, the one that took it last.
class AVPlayerLayer {
public:
    AVPlayerLayer() = default;
    ~AVPlayerLayer() { disconnect(); }
    AVPlayerLayer(const AVPlayerLayer&) = delete;
    AVPlayerLayer& operator=(const AVPlayerLayer&) = delete;

    /// Null for none. The surface keeps showing the last picture until another comes.
    void setPlayer(std::shared_ptr<AVPlayer> player);
    const std::shared_ptr<AVPlayer>& player() const { return m_player; }

    /// The surface and its size in pixels, above which pictures needn't be kept. Null while nobody can see
    /// the layer: then no pictures are made.
    void setSurface(std::shared_ptr<PictureSink> surface, CGSize pixels);

    /// How the front end fits the picture into the surface.
    void setVideoGravity(AVLayerVideoGravity gravity) { m_videoGravity = gravity; }
    AVLayerVideoGravity videoGravity() const { return m_videoGravity; }

private:
    void connect();
    void disconnect();

    std::shared_ptr<AVPlayer> m_player;
    std::shared_ptr<PictureSink> m_surface;
    CGSize m_pixels;
    AVLayerVideoGravity m_videoGravity = AVLayerVideoGravity::resizeAspect;
};

} // namespace anadrome
