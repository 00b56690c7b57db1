#include "Models/RunExport.h"

#include "Platform/Foundation/Print.h"

namespace anadrome {

namespace {

std::string errorDescription(const AVAssetExportSession& session) {
    const std::optional<NSError> error = session.error();
    if (!error)
        fatalError("an export failed without an error");
    debugLog(error->description());
    return error->localizedDescription();
}

} // namespace

void runExport(const std::shared_ptr<AVAssetExportSession>& session,
               const std::shared_ptr<ExportTimer>& exportTimer, const char* errorPrefix,
               VideoEncoder::ProgressHandler progressHandler, VideoEncoder::Completion completion) {
    exportTimer->start(session, progressHandler);
    session->exportAsynchronouslyWithCompletionHandler([session, exportTimer, errorPrefix,
                                                        progressHandler = std::move(progressHandler),
                                                        completion = std::move(completion)] {
        const AVAssetExportSessionStatus status = session->status();
        if (status == AVAssetExportSessionStatus::completed) {
            exportTimer->stop();
            progressHandler(1);
            if (completion)
                completion(true, std::nullopt);
        } else if (status == AVAssetExportSessionStatus::failed) {
            exportTimer->stop();
            const std::string message = errorPrefix + errorDescription(*session);
            if (completion)
                completion(false, message);
        } else {
            debugLog("an export ended with status " + std::to_string(static_cast<int>(status)));
        }
    });
}

} // namespace anadrome
