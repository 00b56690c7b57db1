#pragma once

#include "Platform/AVFoundation/Libav/PictureConverter.h"
#include "Platform/AVFoundation/Render/PictureTrack.h"
#include "Platform/AVFoundation/Render/Placement.h"

#include <map>
#include <span>

namespace anadrome::render {

/// One picture on the canvas. The transform goes from its natural size to the canvas.
struct Layer {
    TrackPicture picture;
    CGAffineTransform transform;
    double opacity = 1;
};

/// Makes the pictures of a movie out of layers: scaled, turned, in the movie's colour, 8 bits. One thread at
/// a time.
class PictureComposer {
public:
    struct Target {
        /// In square pixels; the layers' transforms lead here.
        CGSize canvas;
        /// What the canvas is scaled to, even.
        PixelSize size;
        libav::ColorTags color;
    };
    explicit PictureComposer(const Target& target) : m_target(target) {}

    /// The layers, the lowest first, on black. The same layers again give the same picture again.
    Result<CVPixelBufferRef> compose(std::span<const Layer> layers);

private:
    std::optional<NSError> drawAll(std::span<const Layer> layers);
    std::optional<NSError> drawOne(const Layer& layer, const Placement& placement);
    /// The layer's picture, scaled to the size and in the movie's colour.
    Result<CVPixelBufferRef> converted(const TrackPicture& picture, const PixelSize& size);

    const Target m_target;
    /// One for each source, which has one form nearly always.
    struct Conversion {
        std::unique_ptr<libav::PictureConverter> converter;
        PixelSize size;
    };
    std::map<AVAssetTrackRef, Conversion> m_conversions;

    std::vector<Layer> m_lastLayers;
    CVPixelBufferRef m_lastPicture;
};

/// The colour that a movie made from this track has: the track's own, or what untagged video of its size is
/// taken for; BT.709 for a track in HDR or in a wide gamut that is made for it.
libav::ColorTags movieColorFor(const AVAssetTrack& track);

} // namespace anadrome::render
