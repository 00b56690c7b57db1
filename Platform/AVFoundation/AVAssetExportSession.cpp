#include "Platform/AVFoundation/AVAssetExportSession.h"

#include "Platform/AVFoundation/Render/ExportPreset.h"
#include "Platform/AVFoundation/Render/ExportRun.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

std::shared_ptr<AVAssetExportSession>
AVAssetExportSession::exportSessionWithAsset(std::shared_ptr<const AVAsset> asset,
                                             const std::string& presetName) {
    const std::optional<render::PixelSize> box = render::presetBox(presetName);
    if (!box || asset->tracks().empty())
        return nullptr;
    return std::shared_ptr<AVAssetExportSession>(
        new AVAssetExportSession(std::make_shared<render::ExportRun>(std::move(asset), *box)));
}

void AVAssetExportSession::setVideoComposition(AVMutableVideoComposition videoComposition) {
    if (!(CMTimeCompare(videoComposition.frameDuration(), kCMTimeZero) > 0) ||
        !CMTIME_IS_NUMERIC(videoComposition.frameDuration()))
        fatalError("AVAssetExportSession: a video composition must have a positive frame duration");
    m_run->request().videoComposition = std::move(videoComposition);
}

void AVAssetExportSession::setOutputURL(URL outputURL) {
    m_run->request().outputURL = std::move(outputURL);
}

void AVAssetExportSession::setOutputFileType(AVFileType outputFileType) {
    m_run->request().outputFileType = outputFileType;
}

void AVAssetExportSession::setAudioTimePitchAlgorithm(AVAudioTimePitchAlgorithm algorithm) {
    m_run->request().pitchAlgorithm = algorithm;
}

void AVAssetExportSession::setMetadata(std::vector<AVMetadataItem> metadata) {
    m_run->request().metadata = std::move(metadata);
}

void AVAssetExportSession::setShouldOptimizeForNetworkUse(bool optimizes) {
    m_run->request().optimizesForNetworkUse = optimizes;
}

void AVAssetExportSession::exportAsynchronouslyWithCompletionHandler(std::function<void()> handler) {
    if (!m_run->request().outputURL || !m_run->request().outputFileType)
        fatalError("AVAssetExportSession: an export needs an output URL and an output file type");
    m_run->start([self = shared_from_this(), handler = std::move(handler)] { handler(); });
}

void AVAssetExportSession::cancelExport() {
    m_run->cancel();
}

AVAssetExportSessionStatus AVAssetExportSession::status() const {
    return m_run->status();
}

std::optional<NSError> AVAssetExportSession::error() const {
    return m_run->error();
}

float AVAssetExportSession::progress() const {
    return m_run->progress();
}

} // namespace anadrome
