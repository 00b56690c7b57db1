#include "Models/RunExport.h"
#include "Models/VideoExportPresetHelper.h"
#include "Platform/AVFoundation/AVMutableComposition.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"

#include <cmath>

namespace anadrome {

namespace {

constexpr std::int32_t durationTimeScale = 600;

/// The time at the scale that is nearest. Seconds computed from a time at that very scale may lie a rounding
/// error below it, and a tick too few would shift which picture is on screen.
CMTime timeFrom(double seconds, std::int32_t timeScale) {
    return CMTimeMakeWithSeconds(seconds + 0.5 / timeScale, timeScale);
}

/// A stretch of the source and where and how long it is shown, in seconds.
struct ScaledStretch {
    double start;
    double end;
    double newDuration;
    double insertionTime;
};

std::optional<NSError> insertAndScale(const AVAsset& asset, AVMutableCompositionTrack& compositionTrack,
                                      AVMediaType mediaType, const ScaledStretch& stretch) {
    const std::vector<AVAssetTrackRef> tracks = asset.tracksWithMediaType(mediaType);
    if (tracks.empty()) {
        if (mediaType == AVMediaTypeVideo)
            fatalError("insertAndScale: the asset has no video track");
        debugLog("no sound");
        return std::nullopt;
    }
    const AVAssetTrackRef& track = tracks.front();
    const std::int32_t timeScale = track->naturalTimeScale();
    const CMTimeRange range =
        CMTimeRangeFromTimeToTime(timeFrom(stretch.start, timeScale), timeFrom(stretch.end, timeScale));
    const CMTime insertionTime = timeFrom(stretch.insertionTime, timeScale);
    if (std::optional<NSError> error = compositionTrack.insertTimeRange(range, track, insertionTime))
        return error;
    compositionTrack.scaleTimeRange(CMTimeRangeMake(insertionTime, range.duration),
                                    timeFrom(stretch.newDuration, durationTimeScale));
    return std::nullopt;
}

/// The track upright on a canvas of its own shown size, thirty pictures a second.
AVMutableVideoComposition uprightComposition(const AVAssetTrack& source,
                                             const AVAssetTrack& compositionTrack) {
    auto layerInstruction =
        AVMutableVideoCompositionLayerInstruction::videoCompositionLayerInstructionWithAssetTrack(
            compositionTrack);
    layerInstruction.setTransform(source.preferredTransform(), kCMTimeZero);

    AVMutableVideoCompositionInstruction instruction;
    instruction.setLayerInstructions({layerInstruction});
    instruction.setTimeRange(compositionTrack.timeRange());

    const CGSize size = CGSizeApplyAffineTransform(source.naturalSize(), source.preferredTransform());
    AVMutableVideoComposition composition;
    composition.setFrameDuration(CMTimeMake(1, 30));
    composition.setRenderSize({std::abs(size.width), std::abs(size.height)});
    composition.setInstructions({instruction});
    return composition;
}

} // namespace

void VideoEncoder::changeSpeed(const URL& inputUrl, const URL& outputUrl, AVFileType fileType, double speed,
                               ProgressHandler progressHandler, Completion completion) {
    const auto fail = [&](std::string message) {
        if (completion)
            completion(false, std::move(message));
    };
    const auto composition = std::make_shared<AVMutableComposition>();
    const AVURLAsset asset(inputUrl);
    const std::vector<AVAssetTrackRef> videoTracks = asset.tracksWithMediaType(AVMediaTypeVideo);
    if (videoTracks.empty())
        return fail("Change speed: Failed to load video track");
    const AVAssetTrackRef& videoTrack = videoTracks.front();
    const auto compositionVideoTrack = composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    if (!compositionVideoTrack)
        return fail("Change speed: Failed to add video tracks");
    std::shared_ptr<AVMutableCompositionTrack> compositionAudioTrack;
    if (!asset.tracksWithMediaType(AVMediaTypeAudio).empty())
        compositionAudioTrack = composition->addMutableTrackWithMediaType(AVMediaTypeAudio, 0);

    const double duration = CMTimeGetSeconds(asset.duration());
    const double newDuration = std::round(duration / speed * 10) / 10;
    const ScaledStretch whole{0, duration, newDuration, 0};
    if (auto error = insertAndScale(asset, *compositionVideoTrack, AVMediaTypeVideo, whole))
        return fail(error->localizedDescription());
    if (compositionAudioTrack)
        if (auto error = insertAndScale(asset, *compositionAudioTrack, AVMediaTypeAudio, whole))
            return fail(error->localizedDescription());

    const auto index = NSUserDefaults::standardUserDefaults().integerForKey("resolutionIndexKey");
    const auto session =
        AVAssetExportSession::exportSessionWithAsset(composition, VideoExportPresetHelper::presetName(index));
    if (!session)
        return fail("Failed to prepare session");
    session->setVideoComposition(uprightComposition(*videoTrack, *compositionVideoTrack));
    session->setOutputURL(outputUrl);
    session->setOutputFileType(fileType);
    session->setAudioTimePitchAlgorithm(AVAudioTimePitchAlgorithmVarispeed);
    runExport(session, m_stop.get_token(), m_exportTimer, "changeSpeedError: ", std::move(progressHandler),
              std::move(completion));
}

} // namespace anadrome
