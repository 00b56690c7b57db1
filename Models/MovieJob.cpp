#include "Models/MovieJob.h"

#include "Models/VideoEncoder.h"
#include "Models/VideoFileManager.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Dispatch/MainThread.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/Print.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace anadrome {

namespace {

void debugLogResult(const std::string& stage, bool success) {
    debugLog(stage + " result = " + (success ? "true" : "false"));
}

std::int64_t frameCount(const URL& movie) {
    const auto tracks = AVAsset::assetWithURL(movie)->tracksWithMediaType(AVMediaTypeVideo);
    return tracks.empty() ? 0 : tracks.front()->sampleCount();
}

} // namespace

/// How a stage ended; a failure has a message.
struct MovieJob::StageResult {
    bool success;
    std::optional<std::string> message;
};

std::shared_ptr<MovieJob> MovieJob::make(const MovieRecipe& recipe, URL clip) {
    std::shared_ptr<MovieJob> job(new MovieJob(recipe, std::move(clip)), MainThreadDeleter<MovieJob>());
    job->m_encoder = std::make_shared<VideoEncoder>([weak = std::weak_ptr(job)](float progress) {
        if (const auto self = weak.lock())
            self->reportProgress(Stage::reverse, progress);
    });
    return job;
}

MovieJob::MovieJob(const MovieRecipe& recipe, URL clip) : m_recipe(recipe), m_clip(std::move(clip)) {}

MovieJob::~MovieJob() {
    if (!m_isRunning)
        return;
    m_encoder->cancel();
    removeWorkFiles();
}

void MovieJob::start() {
    if (std::exchange(m_isStarted, true))
        fatalError("A movie job was started twice");
    m_isRunning = true;
    startReverse();
}

void MovieJob::cancel() {
    m_encoder->cancel();
}

void MovieJob::startReverse() {
    reportStage(Stage::reverse);
    const URL output = newWorkUrl();
    const auto start = std::chrono::steady_clock::now();
    const auto completion = [weak = weak_from_this(), start, output](bool success, const auto& message) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        debugLog("reverseVideo took " + std::to_string(elapsed.count()) + " s");
        if (const auto self = weak.lock())
            self->reverseFinished(output, {success, message});
    };
    // Blocks for the whole read pass. A job that is dropped meanwhile mustn't live on until that ends.
    DispatchQueue::global(QualityOfService::userInteractive)
        .async([encoder = m_encoder, clip = m_clip, output, fileType = m_recipe.fileType(), completion,
                isReverseOnly = isReverseOnly()] {
            encoder->reverseVideo(clip, output, fileType, completion, isReverseOnly);
        });
}

void MovieJob::reverseFinished(const URL& reverseOutput, const StageResult& result) {
    debugLogResult("reverseVideo", result.success);
    if (!result.success)
        return stageFailed(result);
    if (m_recipe.isReversalOnly())
        return finished(reverseOutput);
    reportStage(Stage::reverseSpeedChange);
    const URL output = newWorkUrl();
    m_encoder->changeSpeed(reverseOutput, output, m_recipe.fileType(), m_recipe.reverseSpeed(),
                           isReverseOnly() ? progressOfStage(Stage::reverseSpeedChange, 0.5F, 0.5F)
                                           : progressOfStage(Stage::reverseSpeedChange, 0.25F, 0.25F),
                           [weak = weak_from_this(), output](bool success, const auto& message) {
                               if (const auto self = weak.lock())
                                   self->reverseSpeedChangeFinished(output, {success, message});
                           });
}

void MovieJob::reverseSpeedChangeFinished(const URL& reversed, const StageResult& result) {
    debugLogResult("reverseVideoSpeedChange", result.success);
    if (!result.success)
        return stageFailed(result);
    if (isReverseOnly())
        return compressUnlessDone(reversed);
    reportStage(Stage::normalSpeedChange);
    const URL output = newWorkUrl();
    m_encoder->changeSpeed(m_clip, output, m_recipe.fileType(), m_recipe.normalSpeed(),
                           progressOfStage(Stage::normalSpeedChange, 0.5F, 0.25F),
                           [weak = weak_from_this(), reversed, output](bool success, const auto& message) {
                               if (const auto self = weak.lock())
                                   self->normalSpeedChangeFinished(output, reversed, {success, message});
                           });
}

void MovieJob::normalSpeedChangeFinished(const URL& forward, const URL& reversed, const StageResult& result) {
    if (!result.success)
        return stageFailed(result);
    mergeVideos(forward, reversed);
}

void MovieJob::mergeVideos(const URL& forward, const URL& reversed) {
    const bool isReverseFirst = m_recipe.outputType() == OutputType::reversedThenForward;
    reportStage(Stage::merge);
    const URL output = newWorkUrl();
    m_encoder->merge(isReverseFirst ? reversed : forward, isReverseFirst ? forward : reversed, output,
                     m_recipe.fileType(), progressOfStage(Stage::merge, 0.75F, 0.25F),
                     [weak = weak_from_this(), output](bool success, const auto& message) {
                         if (const auto self = weak.lock())
                             self->mergeFinished(output, {success, message});
                     });
}

void MovieJob::mergeFinished(const URL& merged, const StageResult& result) {
    if (!result.success)
        return stageFailed(result);
    compressUnlessDone(merged);
}

void MovieJob::compressUnlessDone(const URL& movie) {
    if (!m_recipe.keepsMetadata())
        return finished(movie);
    reportStage(Stage::compress);
    m_encoder->compressVideo(m_clip, movie, newWorkUrl(), m_recipe.fileType(),
                             [weak = weak_from_this()](const Result<URL>& result) {
                                 if (const auto self = weak.lock())
                                     self->compressFinished(result);
                             });
}

void MovieJob::compressFinished(const Result<URL>& result) {
    if (result)
        return finished(*result);
    if (!m_encoder->isCancelled())
        print("メタデータのコピーまたは書き出し中にエラーが発生: " + result.error().description());
    stageFailed({false, result.error().localizedDescription()});
}

void MovieJob::stageFailed(const StageResult& result) {
    if (!result.message)
        fatalError("A stage failed without a message");
    reportEnd(*result.message);
}

void MovieJob::finished(const URL& movie) {
    reportEnd(Movie{movie, frameCount(movie), m_encoder->missingFrames()});
}

void MovieJob::removeWorkFiles() const {
    for (const URL& file : m_workFiles)
        NSFileManager::defaultManager().removeItemAtPath(file.path());
}

URL MovieJob::newWorkUrl() {
    m_workFiles.push_back(VideoFileManager::newWorkUrl(m_recipe.fileType()));
    return m_workFiles.back();
}

VideoEncoder::ProgressHandler MovieJob::progressOfStage(Stage stage, float start, float share) {
    return [weak = weak_from_this(), stage, start, share](float progress) {
        if (const auto self = weak.lock())
            self->reportProgress(stage, start + progress * share);
    };
}

template <class Event>
void MovieJob::report(Event event) {
    DispatchQueue::main().async([weak = weak_from_this(), event = std::move(event)] {
        if (const auto self = weak.lock())
            event(*self);
    });
}

template <class Call>
void MovieJob::notify(Call call) const {
    // An observer may add another, or drop the job.
    const auto observers = m_observers;
    for (const auto& observer : observers)
        if (const auto alive = observer.lock())
            call(*alive);
}

void MovieJob::reportStage(Stage stage) {
    report([stage](MovieJob& self) {
        self.m_stage = stage;
        self.notify([&](Observer& observer) { observer.jobBeganStage(self, stage); });
    });
}

void MovieJob::reportProgress(Stage stage, float fraction) {
    // The reverse stage reports its share of a run that goes on.
    const float whole = m_recipe.isReversalOnly() ? fraction * 2 : fraction;
    // A clip whose headers claim no duration has no meaningful fraction.
    if (!std::isfinite(whole))
        return;
    report([stage, whole](MovieJob& self) {
        // An export's progress is polled, and may come when its end is already known.
        if (!self.m_isRunning || self.m_stage != stage)
            return;
        self.m_fraction = std::clamp(whole, 0.0F, 1.0F);
        self.notify([&](Observer& observer) { observer.jobProgressed(self); });
    });
}

void MovieJob::reportEnd(std::variant<Movie, std::string> movieOrMessage) {
    report([movieOrMessage = std::move(movieOrMessage)](MovieJob& self) {
        const Outcome outcome = self.outcomeOf(movieOrMessage);
        if (std::holds_alternative<Cancelled>(outcome))
            self.removeWorkFiles();
        self.m_isRunning = false;
        self.notify([&](Observer& observer) { observer.jobEnded(self, outcome); });
    });
}

MovieJob::Outcome MovieJob::outcomeOf(const std::variant<Movie, std::string>& movieOrMessage) const {
    // A stage may have ended well, or failed of itself, just before it was cancelled.
    if (m_encoder->isCancelled())
        return Cancelled{};
    if (const Movie* movie = std::get_if<Movie>(&movieOrMessage))
        return *movie;
    return Failure{m_stage, std::get<std::string>(movieOrMessage)};
}

} // namespace anadrome
