#pragma once

#include "Platform/AVFoundation/AVMutableVideoCompositionLayerInstruction.h"

namespace anadrome {

/// What is seen in a stretch of the movie: layers, the first on top, on black.
class AVMutableVideoCompositionInstruction {
public:
    void setTimeRange(const CMTimeRange& timeRange) { m_timeRange = timeRange; }
    void setLayerInstructions(std::vector<AVMutableVideoCompositionLayerInstruction> layers) {
        m_layers = std::move(layers);
    }

    const CMTimeRange& timeRange() const { return m_timeRange; }
    const std::vector<AVMutableVideoCompositionLayerInstruction>& layerInstructions() const {
        return m_layers;
    }

private:
    CMTimeRange m_timeRange = kCMTimeRangeInvalid;
    std::vector<AVMutableVideoCompositionLayerInstruction> m_layers;
};

} // namespace anadrome
