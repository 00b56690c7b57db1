#pragma once

#include "Platform/AVFoundation/AVPlayerLayer.h"
#include "Platform/UIKit/UIView.h"

namespace anadrome {

/// A view that shows a player's pictures. A front end gives the layer its surface while the view is on the
/// screen.
class AVPlayerLayerView : public UIView {
public:
    AVPlayerLayer& layer() { return m_layer; }

private:
    AVPlayerLayer m_layer;
};

} // namespace anadrome
