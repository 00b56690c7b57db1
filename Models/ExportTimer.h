#pragma once

#include "Platform/AVFoundation/AVAssetExportSession.h"
#include "Platform/Foundation/NSTimer.h"

#include <functional>
#include <memory>
#include <mutex>

namespace anadrome {

/// Polls the progress of the export that runs, fifty times a second on the main queue. Any thread.
class ExportTimer : public std::enable_shared_from_this<ExportTimer> {
public:
    /// Begins on the main queue, with a first report at once. A former timer is dropped, not stopped.
    void start(std::shared_ptr<AVAssetExportSession> session, std::function<void(float)> progressHandler);

    /// To be called when the session has ended, also if its timer hasn't begun yet.
    void stop();

private:
    void begin(const std::shared_ptr<AVAssetExportSession>& session,
               const std::function<void(float)>& progressHandler);

    std::mutex m_mutex;
    std::shared_ptr<NSTimer> m_exportTimer;
};

} // namespace anadrome
