#pragma once

#include "Models/MovieJob.h"
#include "Terminal/CommandLine.h"
#include "Terminal/OutputFile.h"
#include "Terminal/ProgressReport.h"

#include <functional>
#include <memory>
#include <string>

namespace anadrome::terminal {

/// One movie job on one clip, from the checks before it to the movie in its place. The user's stored
/// preferences play no part and stay as they are. Main thread, with the event loop running.
class JobCommand : public MovieJob::Observer, public std::enable_shared_from_this<JobCommand> {
public:
    explicit JobCommand(const JobOptions& options);

    /// Returns at once. `ended` gets the exit code later, on the main thread.
    void start(std::function<void(int exitCode)> ended);

    /// Cancels the job and ends with this exit code. What can't be cancelled, or doesn't end in time, ends
    /// with the process.
    void interrupt(int exitCode);
    bool isInterrupted() const { return m_exitCodeOfInterrupt != 0; }

private:
    void jobBeganStage(const MovieJob& job, MovieJob::Stage stage) override;
    void jobProgressed(const MovieJob& job) override;
    void jobEnded(const MovieJob& job, const MovieJob::Outcome& outcome) override;

    /// Why the job can't even start; empty if it can. Blocks.
    std::string obstacle() const;
    void startJob();
    /// Moves the movie to its place. Blocks while it is copied from another file system.
    void deliver(const MovieJob::Movie& movie);
    void succeed(const MovieJob::Movie& movie);
    void fail(const std::string& message);
    /// False if the result couldn't be printed.
    bool report(const MovieJob::Movie& movie) const;
    /// Runs a member function later, on the main thread or off it.
    template <class Call>
    void later(const DispatchQueue& queue, Call call);

    const JobOptions m_options;
    const URL m_clip;
    OutputFile m_output;
    ProgressReport m_progress;
    std::shared_ptr<MovieJob> m_job;
    std::function<void(int)> m_ended;
    int m_exitCodeOfInterrupt = 0;
};

} // namespace anadrome::terminal
