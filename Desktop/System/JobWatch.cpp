#include "Desktop/System/JobWatch.h"

namespace anadrome::desktop {

void JobWatch::follow(const std::shared_ptr<MovieJob>& job) {
    m_job = job;
    if (job)
        job->addObserver(weak_from_this());
    Q_EMIT runningChanged();
}

double JobWatch::progress() const {
    const auto job = m_job.lock();
    return job ? job->fraction() : 0;
}

void JobWatch::stop() {
    if (const auto job = m_job.lock())
        job->cancel();
}

void JobWatch::jobEnded(const MovieJob&, const MovieJob::Outcome& outcome) {
    m_job.reset();
    Q_EMIT runningChanged();
    if (std::holds_alternative<MovieJob::Movie>(outcome))
        Q_EMIT made();
    else if (const auto* failure = std::get_if<MovieJob::Failure>(&outcome))
        Q_EMIT failed(QString::fromStdString(failure->message));
}

} // namespace anadrome::desktop
