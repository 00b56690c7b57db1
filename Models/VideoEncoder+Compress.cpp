#include "Models/RunExport.h"
#include "Models/VideoExportPresetHelper.h"
#include "Platform/AVFoundation/AVAssetExportSession.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"

namespace anadrome {

namespace {

constexpr const char* errorDomain = "ExportSessionError";

} // namespace

void VideoEncoder::compressVideo(const URL& sourceUrl, const URL& inputUrl, const URL& outputUrl,
                                 AVFileType fileType, URLCompletion completion) {
    const AVURLAsset sourceAsset(sourceUrl);
    const auto inputAsset = std::make_shared<AVURLAsset>(inputUrl);
    const auto index = NSUserDefaults::standardUserDefaults().integerForKey("resolutionIndexKey");
    const auto session =
        AVAssetExportSession::exportSessionWithAsset(inputAsset, VideoExportPresetHelper::presetName(index));
    if (!session)
        return completion(NSError(errorDomain, -1, "Failed to create AVAssetExportSession"));
    session->setOutputURL(outputUrl);
    session->setOutputFileType(fileType);
    session->setMetadata(sourceAsset.metadata());
    session->exportAsynchronouslyWithCompletionHandler([session,
                                                        stopper = stopOnRequest(session, m_stop.get_token()),
                                                        outputUrl, completion = std::move(completion)] {
        switch (session->status()) {
        case AVAssetExportSessionStatus::completed:
            return completion(outputUrl);
        case AVAssetExportSessionStatus::failed:
        case AVAssetExportSessionStatus::cancelled:
            return completion(session->error().value_or(NSError(errorDomain, -2, "Failed to export")));
        default:
            debugLog("an export ended before it had begun");
        }
    });
}

} // namespace anadrome
