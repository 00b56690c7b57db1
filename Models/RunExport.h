#pragma once

#include "Models/ExportTimer.h"
#include "Models/VideoEncoder.h"

#include <stop_token>

namespace anadrome {

/// Ends the session's export when a stop is requested. Keep it until the export has ended.
using ExportStopper = std::stop_callback<std::function<void()>>;
std::shared_ptr<ExportStopper> stopOnRequest(const std::shared_ptr<AVAssetExportSession>& session,
                                             const std::stop_token& stop);

/// Starts the session's export with its progress and reports its end: success after a last progress of 1, or
/// failure with the prefix and the error's description. A stop ends the export as a failure; its file is
/// removed.
void runExport(const std::shared_ptr<AVAssetExportSession>& session, const std::stop_token& stop,
               const std::shared_ptr<ExportTimer>& exportTimer, const char* errorPrefix,
               VideoEncoder::ProgressHandler progressHandler, VideoEncoder::Completion completion);

} // namespace anadrome
