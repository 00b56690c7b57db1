#include "Platform/AVFoundation/AVPlayerLayer.h"

#include "Platform/AVFoundation/Playback/PlayerEngine.h"

namespace anadrome {

void AVPlayerLayer::setPlayer(std::shared_ptr<AVPlayer> player) {
    if (player == m_player)
        return;
    disconnect();
    m_player = std::move(player);
    connect();
}

void AVPlayerLayer::setSurface(std::shared_ptr<PictureSink> surface, CGSize pixels) {
    if (surface != m_surface)
        disconnect();
    m_surface = std::move(surface);
    m_pixels = pixels;
    connect();
}

void AVPlayerLayer::connect() {
    if (m_player && m_surface)
        m_player->m_engine->setSink(m_surface, m_pixels);
}

void AVPlayerLayer::disconnect() {
    // Another layer may have taken the player over.
    if (m_player && m_surface && m_player->m_engine->sink() == m_surface)
        m_player->m_engine->setSink(nullptr, {});
}

} // namespace anadrome
