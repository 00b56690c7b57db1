#include "Platform/AVKit/AVPlayerViewController.h"

#include "Platform/AVKit/AVPlayerLayerView.h"

namespace anadrome {

void AVPlayerViewController::setPlayer(std::shared_ptr<AVPlayer> player) {
    m_player = std::move(player);
    if (m_layerView)
        m_layerView->layer().setPlayer(m_player);
}

std::shared_ptr<UIView> AVPlayerViewController::loadView() {
    m_layerView = std::make_shared<AVPlayerLayerView>();
    m_layerView->layer().setPlayer(m_player);
    return m_layerView;
}

} // namespace anadrome
