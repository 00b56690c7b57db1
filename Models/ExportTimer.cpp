#include "Models/ExportTimer.h"

#include "Platform/Dispatch/DispatchQueue.h"

namespace anadrome {

namespace {

constexpr double interval = 0.02;

bool hasEnded(const AVAssetExportSession& session) {
    return session.status() > AVAssetExportSessionStatus::exporting;
}

} // namespace

void ExportTimer::start(std::shared_ptr<AVAssetExportSession> session,
                        std::function<void(float)> progressHandler) {
    DispatchQueue::main().async(
        [self = shared_from_this(), session = std::move(session),
         progressHandler = std::move(progressHandler)] { self->begin(session, progressHandler); });
}

void ExportTimer::begin(const std::shared_ptr<AVAssetExportSession>& session,
                        const std::function<void(float)>& progressHandler) {
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        interval, true, [session, progressHandler](NSTimer&) { progressHandler(session->progress()); });
    {
        const std::lock_guard lock(m_mutex);
        m_exportTimer = timer;
    }
    timer->fire();
    // A short export may have ended before its timer was there to be stopped.
    if (hasEnded(*session))
        timer->invalidate();
}

void ExportTimer::stop() {
    const std::lock_guard lock(m_mutex);
    if (m_exportTimer)
        m_exportTimer->invalidate();
}

} // namespace anadrome
