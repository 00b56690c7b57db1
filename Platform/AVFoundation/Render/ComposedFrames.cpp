#include "Platform/AVFoundation/AVError.h"
#include "Platform/AVFoundation/Render/ExportPreset.h"
#include "Platform/AVFoundation/Render/FrameSchedule.h"

#include <algorithm>
#include <cmath>

namespace anadrome::render {

namespace {

using Instruction = AVMutableVideoCompositionInstruction;

/// A last stretch of less than half a frame gets no picture, and the shortest movie has one.
std::int64_t frameCount(const CMTime& duration, const CMTime& frameDuration) {
    const double frames = CMTimeGetSeconds(duration) / CMTimeGetSeconds(frameDuration);
    return std::max(std::llround(frames), 1LL);
}

CMTime frameTime(std::int64_t number, const CMTime& frameDuration) {
    return CMTimeMake(number * frameDuration.value, frameDuration.timescale);
}

class ComposedFrames final : public FrameSchedule {
public:
    ComposedFrames(const AVAsset& asset, const AVMutableVideoComposition& composition,
                   const PictureComposer::Target& target)
        : m_composition(composition), m_target(target), m_composer(target),
          m_count(frameCount(asset.duration(), composition.frameDuration())) {
        for (const AVAssetTrackRef& track : asset.tracksWithMediaType(AVMediaTypeVideo))
            m_tracks.emplace(track->trackID(), std::make_unique<PictureTrack>(track));
    }

    Result<std::optional<Frame>> next() override {
        if (m_number == m_count)
            return std::optional<Frame>();
        const CMTime time = frameTime(m_number, m_composition.frameDuration());
        std::vector<Layer> layers;
        if (std::optional<NSError> error = collectLayers(time, layers))
            return *error;
        Result<CVPixelBufferRef> picture = m_composer.compose(layers);
        if (!picture)
            return picture.error();
        ++m_number;
        return std::optional(Frame{*picture, time, m_composition.frameDuration()});
    }

    const PictureComposer::Target& target() const override { return m_target; }
    CGAffineTransform transform() const override { return CGAffineTransformIdentity; }
    double frameRate() const override { return 1 / CMTimeGetSeconds(m_composition.frameDuration()); }
    CMTime end() const override { return frameTime(m_count, m_composition.frameDuration()); }

private:
    /// The instruction at the time; the last one goes on to the movie's end.
    const Instruction& instructionAt(const CMTime& time) const {
        const auto& all = m_composition.instructions();
        const auto found = std::ranges::find_if(all, [&](const Instruction& instruction) {
            return CMTimeCompare(CMTimeRangeGetEnd(instruction.timeRange()), time) > 0;
        });
        return found == all.end() ? all.back() : *found;
    }

    /// The lowest first, which the instruction lists last.
    std::optional<NSError> collectLayers(const CMTime& time, std::vector<Layer>& layers) {
        const auto& instructions = instructionAt(time).layerInstructions();
        for (auto layer = instructions.rbegin(); layer != instructions.rend(); ++layer) {
            const double opacity = std::clamp(layer->opacityAt(time), 0.0, 1.0);
            PictureTrack& track = *m_tracks.at(layer->trackID());
            if (opacity == 0) {
                track.passBy(time);
                continue;
            }
            Result<TrackPicture> picture = track.at(time);
            if (!picture)
                return picture.error();
            if (picture->pixels)
                layers.push_back({*picture, layer->transformAt(time), opacity});
        }
        return std::nullopt;
    }

    const AVMutableVideoComposition m_composition;
    const PictureComposer::Target m_target;
    PictureComposer m_composer;
    const std::int64_t m_count;
    std::int64_t m_number = 0;
    std::map<int, std::unique_ptr<PictureTrack>> m_tracks;
};

bool hasTrack(const std::vector<AVAssetTrackRef>& tracks, int trackID) {
    return std::ranges::any_of(tracks, [&](const auto& track) { return track->trackID() == trackID; });
}

/// Instructions from zero to the end of the pictures, one after another, on tracks that there are.
bool fits(const AVMutableVideoComposition& composition, const std::vector<AVAssetTrackRef>& tracks) {
    CMTime covered = kCMTimeZero;
    for (const Instruction& instruction : composition.instructions()) {
        if (!CMTIMERANGE_IS_VALID(instruction.timeRange()) || CMTIMERANGE_IS_EMPTY(instruction.timeRange()) ||
            CMTimeCompare(instruction.timeRange().start, covered) != 0)
            return false;
        covered = CMTimeRangeGetEnd(instruction.timeRange());
        for (const auto& layer : instruction.layerInstructions())
            if (!hasTrack(tracks, layer.trackID()))
                return false;
    }
    const CGSize size = composition.renderSize();
    const bool coversPictures = std::ranges::all_of(tracks, [&](const AVAssetTrackRef& track) {
        return CMTimeCompare(CMTimeRangeGetEnd(track->timeRange()), covered) <= 0;
    });
    return coversPictures && std::min(size.width, size.height) >= 1 &&
           std::max(size.width, size.height) < 32768;
}

} // namespace

Result<std::unique_ptr<FrameSchedule>> composedFrames(const AVAsset& asset,
                                                      const AVMutableVideoComposition& composition,
                                                      const PixelSize& presetBox) {
    const std::vector<AVAssetTrackRef> tracks = asset.tracksWithMediaType(AVMediaTypeVideo);
    if (composition.instructions().empty() || tracks.empty() || !fits(composition, tracks))
        return makeAVError(AVErrorInvalidVideoComposition);
    const CGSize canvas = composition.renderSize();
    const PictureComposer::Target target{canvas, fittedSize(canvas, presetBox),
                                         movieColorFor(*tracks.front())};
    return std::unique_ptr<FrameSchedule>(std::make_unique<ComposedFrames>(asset, composition, target));
}

} // namespace anadrome::render
