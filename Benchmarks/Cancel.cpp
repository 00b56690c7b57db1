// Cancels jobs on a clip at random moments of each stage and prints, for each output type, how long the
// answers took: "TYPE STAGE MEDIAN WORST" in milliseconds, then "memory BEFORE AFTER" in kilobytes and "files
// BEFORE AFTER" over all of them. Arguments: CLIP ROUNDS.

#include "Models/MovieJob.h"
#include "Models/VideoFileManager.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/TemporaryDirectory.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <random>

namespace {

using namespace anadrome;
using Clock = std::chrono::steady_clock;

constexpr std::array stageNames{"reverse", "reverseSpeedChange", "normalSpeedChange", "merge", "compress"};
constexpr std::array typeNames{"reversed", "reversedThenForward", "forwardThenReversed"};

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// One job that is cancelled a while after it began a stage.
class CancelledJob : public MovieJob::Observer, public std::enable_shared_from_this<CancelledJob> {
public:
    /// With no stage the job runs to its end.
    void run(const MovieRecipe& recipe, const std::string& clip, std::optional<MovieJob::Stage> stage,
             double delay) {
        m_stage = stage;
        m_delay = delay;
        m_job = MovieJob::make(recipe, URL::fileURLWithPath(clip));
        m_job->addObserver(weak_from_this());
        m_job->start();
        QCoreApplication::exec();
    }
    /// Milliseconds from cancel() to the event; empty if the job was quicker.
    std::optional<double> answer() const { return m_answer; }
    /// Milliseconds that the job's stages took.
    const std::array<double, stageNames.size()>& lengths() const { return m_lengths; }

    void jobBeganStage(const MovieJob&, MovieJob::Stage stage) override {
        closeStage();
        m_current = stage;
        m_began = Clock::now();
        if (stage == m_stage)
            QTimer::singleShot(static_cast<int>(m_delay), [self = shared_from_this()] {
                self->m_cancelled = Clock::now();
                self->m_job->cancel();
            });
    }
    void jobEnded(const MovieJob&, const MovieJob::Outcome& outcome) override {
        closeStage();
        if (std::holds_alternative<MovieJob::Cancelled>(outcome))
            m_answer = millisecondsSince(m_cancelled);
        QCoreApplication::quit();
    }

private:
    void closeStage() {
        if (m_current)
            m_lengths.at(static_cast<std::size_t>(*m_current)) = millisecondsSince(m_began);
    }

    std::shared_ptr<MovieJob> m_job;
    std::optional<MovieJob::Stage> m_stage;
    std::optional<MovieJob::Stage> m_current;
    double m_delay = 0;
    Clock::time_point m_began;
    Clock::time_point m_cancelled;
    std::optional<double> m_answer;
    std::array<double, stageNames.size()> m_lengths{};
};

long residentKilobytes() {
    ::malloc_trim(0);
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::stol(line.substr(6));
    return 0;
}

/// Those with a name: the event loops of pooled threads have descriptors, too, and come and go with them.
long openFiles() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::ranges::count_if(all, [](const auto& entry) {
        std::error_code gone;
        return read_symlink(entry.path(), gone).string().starts_with('/');
    });
}

/// Lets threads that were cut short come to their end.
void settle() {
    QTimer::singleShot(500, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
}

void measureStage(const MovieRecipe& recipe, const std::string& clip, MovieJob::Stage stage, double length,
                  int rounds, std::mt19937& random) {
    std::vector<double> answers;
    while (static_cast<int>(answers.size()) < rounds) {
        const auto job = std::make_shared<CancelledJob>();
        job->run(recipe, clip, stage, std::uniform_real_distribution(0.0, length)(random));
        if (job->answer())
            answers.push_back(*job->answer());
        VideoFileManager::removeAllWorkFiles();
    }
    std::ranges::sort(answers);
    std::cout << typeNames.at(static_cast<std::size_t>(recipe.outputType())) << ' '
              << stageNames.at(static_cast<std::size_t>(stage)) << ' ' << answers.at(answers.size() / 2)
              << ' ' << answers.back() << std::endl;
}

} // namespace

int main(int argc, char** argv) {
    ::mallopt(M_ARENA_MAX, 2);
    QCoreApplication application(argc, argv);
    if (argc != 3)
        return 2;
    const std::string clip = argv[1];
    const int rounds = std::stoi(argv[2]);
    NSUserDefaults::standardUserDefaults().keepInMemory();
    NSUserDefaults::standardUserDefaults().setInteger(2, "resolutionIndexKey");
    std::mt19937 random(20261123);
    std::vector<std::pair<MovieRecipe, std::shared_ptr<CancelledJob>>> whole;
    for (const OutputType type :
         {OutputType::reversed, OutputType::reversedThenForward, OutputType::forwardThenReversed}) {
        const MovieRecipe recipe = *MovieRecipe::make({.outputType = type, .metadata = ClipMetadata::keep});
        whole.emplace_back(recipe, std::make_shared<CancelledJob>());
        whole.back().second->run(recipe, clip, std::nullopt, 0);
    }
    settle();
    const long memory = residentKilobytes();
    const long files = openFiles();
    for (const auto& [recipe, job] : whole)
        for (std::size_t stage = 0; stage < stageNames.size(); ++stage)
            if (job->lengths().at(stage) > 0)
                measureStage(recipe, clip, static_cast<MovieJob::Stage>(stage), job->lengths().at(stage),
                             rounds, random);
    settle();
    std::cout << "memory " << memory << ' ' << residentKilobytes() << "\nfiles " << files << ' '
              << openFiles() << std::endl;
    TemporaryDirectory::remove();
    return 0;
}
