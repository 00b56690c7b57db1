#pragma once

#include "Platform/AVFoundation/AVAsset.h"
#include "Platform/AVFoundation/AVMutableVideoComposition.h"
#include "Platform/AVFoundation/Render/PictureComposer.h"

namespace anadrome::render {

/// The pictures of a movie in the making, one after another with their times. One thread at a time.
class FrameSchedule {
public:
    struct Frame {
        CVPixelBufferRef pixels;
        CMTime time;
        CMTime duration;
    };

    virtual ~FrameSchedule() = default;

    /// Empty at the end.
    virtual Result<std::optional<Frame>> next() = 0;

    /// What all pictures have.
    virtual const PictureComposer::Target& target() const = 0;
    /// How the pictures are to be turned for showing.
    virtual CGAffineTransform transform() const = 0;
    /// Pictures a second; 0 if unknown.
    virtual double frameRate() const = 0;
    /// When the last picture ends.
    virtual CMTime end() const = 0;
};

/// A picture every frame duration, put together by the video composition. Fails where the composition doesn't
/// fit the asset: no size, instructions with gaps, tracks that the asset doesn't have.
Result<std::unique_ptr<FrameSchedule>> composedFrames(const AVAsset& asset,
                                                      const AVMutableVideoComposition& composition,
                                                      const PixelSize& presetBox);

/// The pictures of one track as they come.
std::unique_ptr<FrameSchedule> trackFrames(const AVAssetTrackRef& track, const PixelSize& presetBox);

} // namespace anadrome::render
