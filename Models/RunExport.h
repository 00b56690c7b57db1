#pragma once

#include "Models/ExportTimer.h"
#include "Models/VideoEncoder.h"

namespace anadrome {

/// Starts the session's export with its progress, and tells how it ends: success after a last progress of 1,
/// or failure with the prefix and the error's description. An export that ends otherwise tells nothing.
void runExport(const std::shared_ptr<AVAssetExportSession>& session,
               const std::shared_ptr<ExportTimer>& exportTimer, const char* errorPrefix,
               VideoEncoder::ProgressHandler progressHandler, VideoEncoder::Completion completion);

} // namespace anadrome
