#pragma once

#include "Platform/AVFoundation/AVPlayer.h"
#include "Platform/UIKit/UIViewController.h"

namespace anadrome {

class AVPlayerLayerView;

/// A movie with the system's controls to play, seek and hear it. The controls are the front end's: they
/// operate the player, and nothing plays before the user wants it to.
class AVPlayerViewController : public UIViewController {
public:
    /// Null for none.
    void setPlayer(std::shared_ptr<AVPlayer> player);
    const std::shared_ptr<AVPlayer>& player() const { return m_player; }

    /// Shows the movie's pictures. Null before the view is loaded.
    const std::shared_ptr<AVPlayerLayerView>& layerView() const { return m_layerView; }

protected:
    std::shared_ptr<UIView> loadView() override;

private:
    std::shared_ptr<AVPlayer> m_player;
    std::shared_ptr<AVPlayerLayerView> m_layerView;
};

} // namespace anadrome
