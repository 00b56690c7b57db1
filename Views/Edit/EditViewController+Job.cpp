// From the tap on Create to the Preview screen, or to a dialog. The HUD keeps the controls out of reach for
// as long as the job runs, so there is one job at a time.

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/UIKit/UIStoryboard.h"
#include "Views/Common/ViewHelper.h"
#include "Views/Edit/EditViewController.h"
#include "Views/Preview/PreviewViewController.h"

namespace anadrome {

void EditViewController::createVideo() {
    if (m_job || !hasRoomForFrames())
        return;
    m_player->pause();
    ViewHelper::showProgressHud("", view());
    m_job = MovieJob::make(chosenRecipe(), *m_inputUrl);
    m_job->addObserver(self());
    if (m_jobHandler)
        m_jobHandler(m_job);
    m_job->start();
}

void EditViewController::jobBeganStage(const MovieJob&, MovieJob::Stage stage) {
    if (stage != MovieJob::Stage::compress)
        return;
    ViewHelper::hideHud();
    ViewHelper::showHud(view());
}

void EditViewController::jobProgressed(const MovieJob& job) {
    ViewHelper::updateProgress(job.fraction());
}

void EditViewController::jobEnded(const MovieJob& job, const MovieJob::Outcome& outcome) {
    m_job.reset();
    ViewHelper::hideHud();
    if (const auto* movie = std::get_if<MovieJob::Movie>(&outcome))
        // The HUD goes in a block of the main queue, too; the movie comes after it.
        DispatchQueue::main().async([weak = weakSelf(), url = movie->url, recipe = job.recipe()] {
            if (const auto self = weak.lock())
                self->finishOutput(url, recipe);
        });
    else if (const auto* failure = std::get_if<MovieJob::Failure>(&outcome))
        ViewHelper::showError(self(), failure->message);
}

void EditViewController::leaveJob() {
    if (!m_job)
        return;
    // A pie stays with the screen that is left; the ring of the last stage lies over whatever comes next.
    if (m_job->stage() == MovieJob::Stage::compress)
        ViewHelper::hideHud();
    m_job.reset();
    if (m_jobHandler)
        m_jobHandler(nullptr);
}

void EditViewController::finishOutput(const URL& url, const MovieRecipe& recipe) {
    m_outputUrlForPreview = url;
    m_outputRecipe = recipe;
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
    preview->setRecipe(m_outputRecipe);
    showViewController(preview);
}

} // namespace anadrome
