#include "Terminal/JobCommand.h"

#include "Models/VideoFrameManager.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Terminal/DiskSpace.h"
#include "Terminal/ExitCode.h"
#include "Terminal/JsonLine.h"

#include <QTimer>
#include <array>
#include <iostream>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

/// How long a cancelled job may take to end before the process is ended instead.
constexpr std::chrono::seconds patience{2};

/// By OutputType.
constexpr std::array contents{"backward", "backward, then forward", "forward, then backward"};

ProgressReport::Style progressStyle(const JobOptions& options) {
    if (options.json)
        return ProgressReport::Style::json;
    return !options.quiet && ::isatty(STDERR_FILENO) ? ProgressReport::Style::bar
                                                     : ProgressReport::Style::none;
}

std::string missingFramesMessage(const MovieJob::Movie& movie, const MovieRecipe& recipe) {
    // An export shows another picture instead, so only a plain reversal tells how many are left.
    const std::string missing = recipe.isReversalOnly()
                                    ? "Only " + std::to_string(movie.frames) + " of " +
                                          std::to_string(movie.frames + movie.missingFrames) + " frames"
                                    : "Not all frames";
    if (const std::optional<NSError> error = VideoFrameManager::saveError())
        return missing + " could be kept in " + TemporaryDirectory::current().path() + ": " +
               error->localizedDescription();
    return missing + " are in the movie";
}

} // namespace

JobCommand::JobCommand(const JobOptions& options)
    : m_options(options), m_clip(URL::fileURLWithPath(options.clip)), m_output(options.movie, options.force),
      m_progress(progressStyle(options)) {}

template <class Call>
void JobCommand::later(const DispatchQueue& queue, Call call) {
    queue.async([self = shared_from_this(), call = std::move(call)] { call(*self); });
}

void JobCommand::start(std::function<void(int)> ended) {
    m_ended = std::move(ended);
    NSUserDefaults& preferences = NSUserDefaults::standardUserDefaults();
    preferences.keepInMemory();
    preferences.setInteger(m_options.quality, "resolutionIndexKey");
    later(DispatchQueue::global(QualityOfService::userInteractive), [](JobCommand& self) {
        self.later(DispatchQueue::main(), [message = self.obstacle()](JobCommand& self) {
            if (message.empty())
                self.startJob();
            else
                self.fail(message);
        });
    });
}

std::string JobCommand::obstacle() const {
    if (const std::optional<std::string> message = m_output.obstacle())
        return *message;
    const auto tracks = AVAsset::assetWithURL(m_clip)->tracksWithMediaType(AVMediaTypeVideo);
    // A clip that can't be read is the engine's to judge.
    return tracks.empty() ? "" : lackOfTemporarySpace(*tracks.front()).value_or("");
}

void JobCommand::startJob() {
    m_job = MovieJob::make(m_options.recipe, m_clip);
    m_job->addObserver(weak_from_this());
    m_job->start();
}

void JobCommand::interrupt(int exitCode) {
    m_progress.clear();
    const auto endProcess = [exitCode, partial = m_output.partialUrl()] {
        TemporaryDirectory::removeByExec(exitCode, {partial});
    };
    if (!m_job || !m_job->isRunning())
        endProcess();
    m_exitCodeOfInterrupt = exitCode;
    QTimer::singleShot(patience, endProcess);
    m_job->cancel();
}

void JobCommand::jobBeganStage(const MovieJob&, MovieJob::Stage stage) {
    if (stage == MovieJob::Stage::compress && m_exitCodeOfInterrupt == 0)
        m_progress.finishing();
}

void JobCommand::jobProgressed(const MovieJob& job) {
    if (m_exitCodeOfInterrupt == 0)
        m_progress.update(job.fraction());
}

void JobCommand::jobEnded(const MovieJob&, const MovieJob::Outcome& outcome) {
    if (const auto* movie = std::get_if<MovieJob::Movie>(&outcome))
        later(DispatchQueue::global(QualityOfService::userInitiated),
              [movie = *movie](JobCommand& self) { self.deliver(movie); });
    else if (const auto* failure = std::get_if<MovieJob::Failure>(&outcome))
        fail(failure->message);
    else
        m_ended(m_exitCodeOfInterrupt);
}

void JobCommand::deliver(const MovieJob::Movie& movie) {
    std::optional<std::string> message;
    if (movie.missingFrames > 0)
        message = missingFramesMessage(movie, m_options.recipe);
    if (!message)
        message = m_output.moveHere(movie.url);
    if (!message)
        message = m_output.putInPlace();
    later(DispatchQueue::main(), [message, movie](JobCommand& self) {
        if (message)
            self.fail(*message);
        else
            self.succeed(movie);
    });
}

void JobCommand::succeed(const MovieJob::Movie& movie) {
    m_progress.clear();
    m_ended(report(movie) ? ExitCode::done : ExitCode::jobFailed);
}

void JobCommand::fail(const std::string& message) {
    m_progress.clear();
    if (m_options.json)
        printJsonLine({{"event", "result"}, {"success", false}, {"message", message}});
    std::cerr << message << std::endl;
    m_ended(ExitCode::jobFailed);
}

bool JobCommand::report(const MovieJob::Movie& movie) const {
    if (m_options.json)
        printJsonLine({{"event", "result"},
                       {"success", true},
                       {"output", m_output.url().path()},
                       {"frames", movie.frames}});
    else if (!m_options.quiet)
        std::cout << m_options.movie << ": " << movie.frames << (movie.frames == 1 ? " frame, " : " frames, ")
                  << contents.at(static_cast<std::size_t>(m_options.recipe.outputType())) << std::endl;
    if (!std::cout)
        std::cerr << "The movie is in its place, but the result couldn't be printed" << std::endl;
    return static_cast<bool>(std::cout);
}

} // namespace anadrome::terminal
