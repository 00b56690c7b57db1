#include "Models/RunExport.h"
#include "Models/VideoExportPresetHelper.h"
#include "Platform/AVFoundation/AVMutableComposition.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"

#include <cmath>

namespace anadrome {

namespace {

/// Two clips on tracks of their own, the second behind the first.
class Join {
public:
    Join(const URL& firstUrl, const URL& secondUrl)
        : m_first(firstUrl), m_second(secondUrl), m_firstDuration(m_first.duration()),
          m_secondDuration(m_second.duration()) {}

    // Each gives the message of its failure, if it fails.
    std::optional<std::string> addVideo();
    std::optional<std::string> addAudio();

    AVMutableVideoComposition videoComposition() const;
    const std::shared_ptr<AVMutableComposition>& composition() const { return m_composition; }

private:
    struct Sound {
        const AVAsset& asset;
        CMTime duration;
        CMTime insertionTime;
    };
    bool addSound(const Sound& sound);

    const AVURLAsset m_first;
    const AVURLAsset m_second;
    const CMTime m_firstDuration;
    const CMTime m_secondDuration;
    const std::shared_ptr<AVMutableComposition> m_composition = std::make_shared<AVMutableComposition>();
    AVAssetTrackRef m_referenceTrack;
    std::shared_ptr<AVMutableCompositionTrack> m_firstVideo;
    std::shared_ptr<AVMutableCompositionTrack> m_secondVideo;
};

std::optional<std::string> Join::addVideo() {
    const std::vector<AVAssetTrackRef> firstTracks = m_first.tracksWithMediaType(AVMediaTypeVideo);
    if (firstTracks.empty())
        return "Failed to load first video";
    m_referenceTrack = firstTracks.front();
    m_firstVideo = m_composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    if (!m_firstVideo)
        return "Failed to add first video track";
    if (m_firstVideo->insertTimeRange(CMTimeRangeMake(kCMTimeZero, m_firstDuration), m_referenceTrack,
                                      kCMTimeZero))
        return "Failed to insert first video track";

    m_secondVideo = m_composition->addMutableTrackWithMediaType(AVMediaTypeVideo, 0);
    if (!m_secondVideo)
        return "Failed to add second video track";
    const std::vector<AVAssetTrackRef> secondTracks = m_second.tracksWithMediaType(AVMediaTypeVideo);
    if (secondTracks.empty())
        fatalError("merge: the second clip has no video track");
    if (m_secondVideo->insertTimeRange(CMTimeRangeMake(kCMTimeZero, m_secondDuration), secondTracks.front(),
                                       m_firstDuration))
        return "Failed to insert second video track";
    return std::nullopt;
}

std::optional<std::string> Join::addAudio() {
    if (!addSound({m_first, m_firstDuration, kCMTimeZero}))
        return "Failed to add first audio track";
    if (!addSound({m_second, m_secondDuration, m_firstDuration}))
        return "Failed to add second audio track";
    return std::nullopt;
}

/// A clip without sound, and a track that can't be added, leave that stretch silent.
bool Join::addSound(const Sound& sound) {
    const std::vector<AVAssetTrackRef> tracks = sound.asset.tracksWithMediaType(AVMediaTypeAudio);
    if (tracks.empty())
        return true;
    const auto added = m_composition->addMutableTrackWithMediaType(AVMediaTypeAudio, 0);
    return !added || !added->insertTimeRange(CMTimeRangeMake(kCMTimeZero, sound.duration), tracks.front(),
                                             sound.insertionTime);
}

/// The first clip lies on top until its end and then vanishes: a cut.
AVMutableVideoComposition Join::videoComposition() const {
    using LayerInstruction = AVMutableVideoCompositionLayerInstruction;
    auto first = LayerInstruction::videoCompositionLayerInstructionWithAssetTrack(*m_firstVideo);
    first.setOpacity(0.0, m_firstDuration);
    const auto second = LayerInstruction::videoCompositionLayerInstructionWithAssetTrack(*m_secondVideo);

    AVMutableVideoCompositionInstruction instruction;
    instruction.setTimeRange(CMTimeRangeMake(kCMTimeZero, CMTimeAdd(m_firstDuration, m_secondDuration)));
    instruction.setLayerInstructions({first, second});

    const CGSize size =
        CGSizeApplyAffineTransform(m_referenceTrack->naturalSize(), m_referenceTrack->preferredTransform());
    AVMutableVideoComposition composition;
    composition.setInstructions({instruction});
    composition.setFrameDuration(CMTimeMake(1, 30));
    composition.setRenderSize({std::abs(size.width), std::abs(size.height)});
    return composition;
}

} // namespace

void VideoEncoder::merge(const URL& firstUrl, const URL& secondUrl, const URL& outputUrl, AVFileType fileType,
                         ProgressHandler progressHandler, Completion completion) {
    const auto fail = [&](std::string message) {
        if (completion)
            completion(false, std::move(message));
    };
    Join join(firstUrl, secondUrl);
    if (std::optional<std::string> message = join.addVideo())
        return fail(*message);
    const AVMutableVideoComposition videoComposition = join.videoComposition();
    if (std::optional<std::string> message = join.addAudio())
        return fail(*message);

    const auto index = NSUserDefaults::standardUserDefaults().integerForKey("resolutionIndexKey");
    const auto session = AVAssetExportSession::exportSessionWithAsset(
        join.composition(), VideoExportPresetHelper::presetName(index));
    if (!session)
        return fail("Failed to init exporter");
    session->setOutputURL(outputUrl);
    session->setOutputFileType(fileType);
    session->setShouldOptimizeForNetworkUse(true);
    session->setVideoComposition(videoComposition);
    runExport(session, m_stop.get_token(), m_exportTimer, "merge export error: ", std::move(progressHandler),
              std::move(completion));
}

} // namespace anadrome
