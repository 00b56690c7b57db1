#pragma once

#include "Models/MovieJob.h"

#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// The movie that is being made, as signals. Main thread only.
class JobWatch : public QObject, public MovieJob::Observer, public std::enable_shared_from_this<JobWatch> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One for the program")
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    /// Watches a job that is about to start; null if the one before was dropped, which ends it without an
    /// event. Held weakly.
    void follow(const std::shared_ptr<MovieJob>& job);

    /// From the start of a job to its end, however it ends.
    bool isRunning() const { return !m_job.expired(); }
    /// Share of the job that is done, 0 to 1; 0 if none runs.
    double progress() const;
    /// Cancels the job; no effect if none runs.
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void runningChanged();
    void progressed();
    /// After runningChanged(). A job that was cancelled or dropped emits neither.
    void made();
    void failed(const QString& message);

private:
    void jobProgressed(const MovieJob&) override { Q_EMIT progressed(); }
    void jobEnded(const MovieJob&, const MovieJob::Outcome& outcome) override;

    std::weak_ptr<MovieJob> m_job;
};

} // namespace anadrome::desktop
