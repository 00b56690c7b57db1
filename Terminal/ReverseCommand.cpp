#include "Terminal/ReverseCommand.h"

#include "Models/VideoEncoder.h"
#include "Models/VideoFrameManager.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/UIKit/UIWindow.h"
#include "Terminal/FirstVideoTrack.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome::terminal {

namespace {

/// The reversal reports the first half of a job of two stages; here it is the whole.
constexpr double shareOfJob = 0.5;

} // namespace

ReverseCommand::ReverseCommand(const ReverseOptions& options)
    : Command(options), m_fileType(options.fileType) {}

ReverseCommand::~ReverseCommand() = default;

void ReverseCommand::run() {
    ViewHelper::showProgressHud("", window());
    DispatchQueue::global(QualityOfService::userInteractive).async([this] { runEngine(); });
}

void ReverseCommand::viewChanged(UIView&, double) {
    const JGProgressHUD& hud = ViewHelper::shared().hud();
    if (hud.isVisible())
        progress().update(hud.progress() / shareOfJob);
}

void ReverseCommand::runEngine() {
    m_encoder = std::make_unique<VideoEncoder>([this](float progress) {
        ++m_progressCalls;
        ViewHelper::updateProgress(progress);
    });
    m_encoder->reverseVideo(
        clip(), output().partialUrl(), m_fileType,
        [this](bool success, std::optional<std::string> message) { finished(success, std::move(message)); },
        true);
}

void ReverseCommand::finished(bool success, std::optional<std::string> message) {
    ViewHelper::hideHud();
    // One call for each frame that was read and one for each that was to be written.
    const std::int64_t frames = m_progressCalls / 2;
    if (success)
        message = check(frames);
    else if (!message)
        message = "The job failed";
    if (message)
        fail(std::move(*message));
    else
        succeed(frames, "backward");
}

std::optional<std::string> ReverseCommand::check(std::int64_t frames) const {
    const AVAssetTrackRef track = firstVideoTrack(output().partialUrl());
    const std::int64_t written = track ? track->sampleCount() : 0;
    if (written == frames)
        return std::nullopt;
    const std::string count = std::to_string(written) + " of " + std::to_string(frames) + " frames";
    if (const std::optional<NSError> error = VideoFrameManager::saveError())
        return "Only " + count + " could be kept in " + TemporaryDirectory::current().path() + ": " +
               error->localizedDescription();
    return "The movie has " + count;
}

} // namespace anadrome::terminal
