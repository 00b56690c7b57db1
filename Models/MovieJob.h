#pragma once

#include "Models/MovieRecipe.h"
#include "Models/VideoEncoder.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace anadrome {

/// One run of a recipe on a clip, from the first decoded frame to the finished movie in the work folder.
///
/// A chain of stages: each writes a new work file, and the end of one starts the next on the thread where it
/// ended. Nothing is removed on the way; a failed run leaves its work files to the next sweep.
///
///   reversed only:          reverse, speed
///   reversed and forward:   reverse, speed of the reversed, speed of the clip, merge
///   keeping metadata:       the same, then compress
///   reversal only:          reverse
///
/// Main thread only, with its event loop running; observers are called there. One job at a time: jobs share
/// the frame store. Dropping the last reference ends the run like cancel(), but without an event.
class MovieJob : public std::enable_shared_from_this<MovieJob> {
public:
    enum class Stage { reverse, reverseSpeedChange, normalSpeedChange, merge, compress };

    struct Movie {
        /// A file in the work folder; the next sweep removes it.
        URL url;
        std::int64_t frames;
        /// Frames of the clip that the reverse stage couldn't store or encode, and left out.
        std::int64_t missingFrames;
    };
    struct Failure {
        Stage stage;
        /// For people, as the stage gave it.
        std::string message;
    };
    struct Cancelled {};
    using Outcome = std::variant<Movie, Failure, Cancelled>;

    class Observer {
    public:
        virtual ~Observer() = default;
        virtual void jobBeganStage(const MovieJob&, Stage) {}
        /// fraction() has moved on.
        virtual void jobProgressed(const MovieJob&) {}
        /// The last event of a job.
        virtual void jobEnded(const MovieJob&, const Outcome&) {}
    };

    static std::shared_ptr<MovieJob> make(const MovieRecipe& recipe, URL clip);
    ~MovieJob();
    MovieJob(const MovieJob&) = delete;
    MovieJob& operator=(const MovieJob&) = delete;

    /// Events reach observers in the order in which they were added. Held weakly.
    void addObserver(const std::weak_ptr<Observer>& observer) { m_observers.push_back(observer); }

    /// Returns at once. Once per job.
    void start();

    /// Returns at once. Ends whatever runs, removes this job's work files, then reports Cancelled. Has no
    /// effect on a job that has ended. A job that hasn't started reports Cancelled when it is started.
    void cancel();

    const MovieRecipe& recipe() const { return m_recipe; }
    /// From start() until observers learn the end.
    bool isRunning() const { return m_isRunning; }
    Stage stage() const { return m_stage; }
    /// Share of the whole run that is done, 0 to 1. The stages but compress weigh the same; compress, which
    /// has no progress of its own, runs at 1.
    float fraction() const { return m_fraction; }

private:
    struct StageResult;

    MovieJob(const MovieRecipe& recipe, URL clip);

    void startReverse();
    void reverseFinished(const URL& reverseOutput, const StageResult& result);
    void reverseSpeedChangeFinished(const URL& reversed, const StageResult& result);
    void normalSpeedChangeFinished(const URL& forward, const URL& reversed, const StageResult& result);
    void mergeVideos(const URL& forward, const URL& reversed);
    void mergeFinished(const URL& merged, const StageResult& result);
    void compressUnlessDone(const URL& movie);
    void compressFinished(const Result<URL>& result);

    void stageFailed(const StageResult& result);
    void finished(const URL& movie);
    void removeWorkFiles() const;

    bool isReverseOnly() const { return m_recipe.outputType() == OutputType::reversed; }
    /// A new name in the work folder.
    URL newWorkUrl();
    /// Passes on the progress of a stage that starts at a fraction of the run and takes a share of it.
    VideoEncoder::ProgressHandler progressOfStage(Stage stage, float start, float share);

    // From any thread to the observers.
    void reportStage(Stage stage);
    void reportProgress(Stage stage, float fraction);
    void reportEnd(std::variant<Movie, std::string> movieOrMessage);
    Outcome outcomeOf(const std::variant<Movie, std::string>& movieOrMessage) const;
    template <class Event>
    void report(Event event);
    template <class Call>
    void notify(Call call) const;

    const MovieRecipe m_recipe;
    const URL m_clip;
    std::shared_ptr<VideoEncoder> m_encoder;
    /// Used by one stage after another.
    std::vector<URL> m_workFiles;

    // Main thread.
    std::vector<std::weak_ptr<Observer>> m_observers;
    bool m_isStarted = false;
    bool m_isRunning = false;
    Stage m_stage = Stage::reverse;
    float m_fraction = 0;
};

} // namespace anadrome
