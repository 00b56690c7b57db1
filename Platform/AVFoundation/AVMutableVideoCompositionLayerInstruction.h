#pragma once

#include "Platform/AVFoundation/AVAssetTrack.h"

#include <algorithm>
#include <utility>

namespace anadrome {

/// How one track lies on the canvas over time. A value set at a time holds until the next one.
class AVMutableVideoCompositionLayerInstruction {
public:
    static AVMutableVideoCompositionLayerInstruction
    videoCompositionLayerInstructionWithAssetTrack(const AVAssetTrack& track) {
        AVMutableVideoCompositionLayerInstruction instruction;
        instruction.m_trackID = track.trackID();
        return instruction;
    }

    int trackID() const { return m_trackID; }

    /// From the picture at its natural size to the canvas, both with the origin at the top left and y down.
    void setTransform(const CGAffineTransform& transform, const CMTime& atTime) {
        set(m_transforms, transform, atTime);
    }
    /// From 0, unseen, to 1.
    void setOpacity(double opacity, const CMTime& atTime) { set(m_opacities, opacity, atTime); }

    /// The identity before the first that was set.
    CGAffineTransform transformAt(const CMTime& time) const {
        return at(m_transforms, CGAffineTransformIdentity, time);
    }
    /// 1 before the first that was set.
    double opacityAt(const CMTime& time) const { return at(m_opacities, 1.0, time); }

private:
    template <typename T>
    using Keys = std::vector<std::pair<CMTime, T>>;

    template <typename T>
    static void set(Keys<T>& keys, const T& value, const CMTime& time) {
        const auto place =
            std::ranges::find_if(keys, [&](const auto& key) { return CMTimeCompare(key.first, time) >= 0; });
        if (place != keys.end() && CMTimeCompare(place->first, time) == 0)
            place->second = value;
        else
            keys.insert(place, {time, value});
    }

    template <typename T>
    static T at(const Keys<T>& keys, T value, const CMTime& time) {
        for (const auto& [start, held] : keys)
            if (CMTimeCompare(start, time) <= 0)
                value = held;
        return value;
    }

    int m_trackID = 0;
    Keys<CGAffineTransform> m_transforms;
    Keys<double> m_opacities;
};

} // namespace anadrome
