#pragma once

#include "Platform/AVKit/AVPlayerLayerView.h"

namespace anadrome {

/// The surface of the Edit screen's preview.
class PlayerView : public AVPlayerLayerView {};

} // namespace anadrome
