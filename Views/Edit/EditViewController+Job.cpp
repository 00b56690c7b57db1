// The job chain: one run from the tap on Create to the Preview screen, or to a dialog. Each stage of the
// encoder writes a file of its own, and the end of one starts the next, on the thread where it ended. There
// is one run at a time, because the HUD keeps the controls out of reach for as long as it lasts; that is also
// why what the controls have set can be read on any thread here. Nothing is removed on the way.
//
//   reverse only:           reverse -> speed
//   reverse and forward:    reverse -> speed, then speed of the clip -> merge
//   keeping place and date: ... -> compress

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"

#include <chrono>

namespace anadrome {

namespace {

/// Maps a stage's fraction to the whole run's: from `start` on, over `share` of it.
VideoEncoder::ProgressHandler progressOfStage(float start, float share) {
    return [start, share](float progress) { ViewHelper::updateProgress(start + progress * share); };
}

void debugLogResult(const std::string& stage, bool success) {
    debugLog(stage + " result = " + (success ? "true" : "false"));
}

} // namespace

void EditViewController::createVideo() {
    if (!hasRoomForFrames())
        return;
    m_player->pause();
    ViewHelper::showProgressHud("", view());
    const long outputType = m_outputTypeSegmentedControl.lock()->selectedSegmentIndex();
    const Job job{chosenContainer(), outputType == 0};
    m_isReverseFirst = outputType == 1;
    DispatchQueue::global(QualityOfService::userInteractive).async([weak = weakSelf(), job] {
        if (const auto self = weak.lock())
            self->startReverse(job);
    });
}

void EditViewController::startReverse(const Job& job) {
    const URL output = newWorkUrl(job.container);
    const auto start = std::chrono::steady_clock::now();
    m_videoEncoder->reverseVideo(
        *m_inputUrl, output, job.container.fileType,
        [weak = weakSelf(), start, job, output](bool success, const std::optional<std::string>& message) {
            const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
            debugLog("reverseVideo took " + std::to_string(elapsed.count()) + " s");
            if (const auto self = weak.lock())
                self->reverseFinished(job, output, {success, message});
        },
        job.isReverseOnly);
}

void EditViewController::reverseFinished(const Job& job, const URL& reverseOutput,
                                         const StageResult& result) {
    debugLogResult("reverseVideo", result.success);
    if (!result.success)
        return stageFailed(result);
    const URL output = newWorkUrl(job.container);
    m_videoEncoder->changeSpeed(
        reverseOutput, output, job.container.fileType, m_reverseSpeed,
        job.isReverseOnly ? progressOfStage(0.5F, 0.5F) : progressOfStage(0.25F, 0.25F),
        [weak = weakSelf(), job, output](bool success, const std::optional<std::string>& message) {
            if (const auto self = weak.lock())
                self->reverseSpeedChangeFinished(job, output, {success, message});
        });
}

void EditViewController::reverseSpeedChangeFinished(const Job& job, const URL& reversed,
                                                    const StageResult& result) {
    debugLogResult("reverseVideoSpeedChange", result.success);
    if (!result.success)
        return stageFailed(result);
    if (job.isReverseOnly) {
        ViewHelper::hideHud();
        return finishOnMainQueue(reversed);
    }
    const URL output = newWorkUrl(job.container);
    m_videoEncoder->changeSpeed(
        *m_inputUrl, output, job.container.fileType, m_normalSpeed, progressOfStage(0.5F, 0.25F),
        [weak = weakSelf(), job, reversed, output](bool success, const std::optional<std::string>& message) {
            if (const auto self = weak.lock())
                self->normalSpeedChangeFinished(job, output, reversed, {success, message});
        });
}

void EditViewController::normalSpeedChangeFinished(const Job& job, const URL& forward, const URL& reversed,
                                                   const StageResult& result) {
    if (!result.success)
        return stageFailed(result);
    mergeVideos(job, forward, reversed);
}

void EditViewController::mergeVideos(const Job& job, const URL& forward, const URL& reversed) {
    const URL& first = m_isReverseFirst ? reversed : forward;
    const URL& second = m_isReverseFirst ? forward : reversed;
    const URL output = newWorkUrl(job.container);
    m_videoEncoder->merge(
        first, second, output, job.container.fileType, progressOfStage(0.75F, 0.25F),
        [weak = weakSelf(), output](bool success, const std::optional<std::string>& message) {
            if (const auto self = weak.lock())
                self->mergeFinished(output, {success, message});
        });
}

void EditViewController::mergeFinished(const URL& merged, const StageResult& result) {
    if (!result.success)
        return stageFailed(result);
    ViewHelper::hideHud();
    finishOnMainQueue(merged);
}

void EditViewController::stageFailed(const StageResult& result) {
    if (!result.message)
        fatalError("A stage failed without a message");
    ViewHelper::hideHud();
    ViewHelper::showError(self(), *result.message);
}

void EditViewController::finishOnMainQueue(const URL& url) {
    DispatchQueue::main().async([weak = weakSelf(), url] {
        if (const auto self = weak.lock())
            self->finishOutput(url);
    });
}

void EditViewController::finishOutput(const URL& url) {
    if (!NSUserDefaults::standardUserDefaults().boolForKey("isSaveExifKey")) {
        m_outputUrlForPreview = url;
        presentInterstitialOrPreview();
        return;
    }
    ViewHelper::showHud(view());
    const Container container = chosenContainer();
    m_videoEncoder->compressVideo(*m_inputUrl, url, newWorkUrl(container), container.fileType,
                                  [weak = weakSelf()](const Result<URL>& result) {
                                      ViewHelper::hideHud();
                                      if (const auto self = weak.lock())
                                          self->compressFinished(result);
                                  });
}

void EditViewController::compressFinished(const Result<URL>& result) {
    if (!result) {
        print("メタデータのコピーまたは書き出し中にエラーが発生: " + result.error().description());
        ViewHelper::showError(self(), result.error().localizedDescription());
        return;
    }
    m_outputUrlForPreview = *result;
    DispatchQueue::main().async([weak = weakSelf()] {
        if (const auto self = weak.lock())
            self->presentInterstitialOrPreview();
    });
}

void EditViewController::presentInterstitialOrPreview() {
    if (!presentInterstitial())
        showPreview();
}

void EditViewController::showPreview() {
    if (!m_outputUrlForPreview) {
        FIRAnalytics::logEventWithName("Error_output_nil");
        ViewHelper::showError(self(), "showPreview - outputUrl = nil");
        return;
    }
    const auto preview = std::dynamic_pointer_cast<PreviewViewController>(
        UIStoryboard::storyboardWithName("Preview").instantiateInitialViewController());
    if (!preview)
        fatalError("The storyboard Preview doesn't begin with the Preview screen");
    preview->setCompressedVideoUrl(*m_outputUrlForPreview);
    showViewController(preview);
}

} // namespace anadrome
