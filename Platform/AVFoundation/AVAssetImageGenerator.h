#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/CoreGraphics/CGImage.h"

namespace anadrome {

/// Takes single pictures out of an asset, in the colours of ordinary video whatever the asset has. One thread
/// at a time.
class AVAssetImageGenerator {
public:
    explicit AVAssetImageGenerator(std::shared_ptr<const AVAsset> asset) : m_asset(std::move(asset)) {}

    /// Whether pictures come upright, as they are shown; if not, as they are stored.
    void setAppliesPreferredTrackTransform(bool applies) { m_appliesTransform = applies; }
    /// Pictures that are larger, in square pixels, are scaled down until they fit and keep their shape. Zero
    /// sets no limit.
    void setMaximumSize(CGSize size) { m_maximumSize = size; }
    /// How much before the time a picture may stand: the earliest one that fits is the quickest to make.
    void setRequestedTimeToleranceBefore(const CMTime& tolerance) { m_toleranceBefore = tolerance; }

    /// The picture of the first video track that is on screen at the time, or one that the tolerance allows;
    /// of times beyond either end, the first or last picture. Blocks while the file is read and decoded. An
    /// error if there is no picture or none can be made.
    Result<CGImage> copyCGImageAtTime(const CMTime& time) const;

private:
    const std::shared_ptr<const AVAsset> m_asset;
    bool m_appliesTransform = false;
    CGSize m_maximumSize;
    CMTime m_toleranceBefore = kCMTimePositiveInfinity;
};

} // namespace anadrome
