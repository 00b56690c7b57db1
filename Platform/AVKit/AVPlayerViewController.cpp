#include "Platform/AVKit/AVPlayerViewController.h"

#include "Platform/AVKit/AVPlayerLayerView.h"

namespace anadrome {

void AVPlayerViewController::setPlayer(std::shared_ptr<AVPlayer> player) {
    m_player = std::move(player);
    if (const auto layerView = m_layerView.lock())
        layerView->layer().setPlayer(m_player);
}

std::shared_ptr<UIView> AVPlayerViewController::loadView() {
    const auto layerView = std::make_shared<AVPlayerLayerView>();
    layerView->setAccessibilityIdentifier("moviePlayer");
    layerView->layer().setPlayer(m_player);
    m_layerView = layerView;
    return layerView;
}

} // namespace anadrome
