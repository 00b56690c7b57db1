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

std::shared_ptr<ExportStopper> stopOnRequest(const std::shared_ptr<AVAssetExportSession>& session,
                                             const std::stop_token& stop) {
    return std::make_shared<ExportStopper>(stop, [session] { session->cancelExport(); });
}

void runExport(const std::shared_ptr<AVAssetExportSession>& session, const std::stop_token& stop,
               const std::shared_ptr<ExportTimer>& exportTimer, const char* errorPrefix,
               VideoEncoder::ProgressHandler progressHandler, VideoEncoder::Completion completion) {
    exportTimer->start(session, progressHandler);
    session->exportAsynchronouslyWithCompletionHandler(
        [session, stopper = stopOnRequest(session, stop), exportTimer, errorPrefix,
         progressHandler = std::move(progressHandler), completion = std::move(completion)] {
            exportTimer->stop();
            const AVAssetExportSessionStatus status = session->status();
            if (status == AVAssetExportSessionStatus::completed) {
                progressHandler(1);
                if (completion)
                    completion(true, std::nullopt);
            } else if (completion) {
                completion(false, errorPrefix + errorDescription(*session));
            }
        });
}

} // namespace anadrome
