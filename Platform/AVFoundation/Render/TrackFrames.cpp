#include "Platform/AVFoundation/Render/ExportPreset.h"
#include "Platform/AVFoundation/Render/FrameSchedule.h"

namespace anadrome::render {

namespace {

/// The transform for pictures that were scaled from one size to another.
CGAffineTransform scaledTransform(CGAffineTransform transform, CGSize from, const PixelSize& to) {
    const CGSize shownBefore = CGSizeApplyAffineTransform(from, transform);
    const CGSize shownAfter = CGSizeApplyAffineTransform(
        {static_cast<double>(to.width), static_cast<double>(to.height)}, transform);
    transform.tx *= shownBefore.width != 0 ? shownAfter.width / shownBefore.width : 1;
    transform.ty *= shownBefore.height != 0 ? shownAfter.height / shownBefore.height : 1;
    return transform;
}

class TrackFrames final : public FrameSchedule {
public:
    TrackFrames(const AVAssetTrackRef& track, const PictureComposer::Target& target)
        : m_track(track), m_target(target), m_pictures(track), m_composer(target) {}

    Result<std::optional<Frame>> next() override {
        Result<std::optional<PictureTrack::TimedPicture>> shown = m_pictures.next();
        if (!shown)
            return shown.error();
        if (!*shown)
            return std::optional<Frame>();
        const Layer layer{(*shown)->picture, CGAffineTransformIdentity, 1};
        Result<CVPixelBufferRef> picture = m_composer.compose({&layer, 1});
        if (!picture)
            return picture.error();
        return std::optional(Frame{*picture, (*shown)->time, (*shown)->duration});
    }

    const PictureComposer::Target& target() const override { return m_target; }
    CGAffineTransform transform() const override {
        return scaledTransform(m_track->preferredTransform(), m_track->naturalSize(), m_target.size);
    }
    double frameRate() const override { return m_track->nominalFrameRate(); }
    CMTime end() const override { return CMTimeRangeGetEnd(m_track->timeRange()); }

private:
    const AVAssetTrackRef m_track;
    const PictureComposer::Target m_target;
    PictureTrack m_pictures;
    PictureComposer m_composer;
};

} // namespace

std::unique_ptr<FrameSchedule> trackFrames(const AVAssetTrackRef& track, const PixelSize& presetBox) {
    const CGSize canvas = track->naturalSize();
    return std::make_unique<TrackFrames>(
        track, PictureComposer::Target{canvas, fittedSize(canvas, presetBox), movieColorFor(*track)});
}

} // namespace anadrome::render
