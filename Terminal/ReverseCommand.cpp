#include "Terminal/ReverseCommand.h"

#include "Models/VideoEncoder.h"
#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowScene.h"
#include "Terminal/DiskSpace.h"
#include "Terminal/ExitCode.h"
#include "Terminal/JsonLine.h"
#include "Views/Common/ViewHelper.h"

#include <iostream>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

/// The reversal reports the first half of a job of two stages; here it is the whole.
constexpr double shareOfJob = 0.5;

ProgressReport::Style progressStyle(const ReverseOptions& options) {
    if (options.json)
        return ProgressReport::Style::json;
    return !options.quiet && ::isatty(STDERR_FILENO) ? ProgressReport::Style::bar
                                                     : ProgressReport::Style::none;
}

AVAssetTrackRef firstVideoTrack(const URL& url) {
    const std::vector<AVAssetTrackRef> tracks =
        AVAsset::assetWithURL(url)->tracksWithMediaType(AVMediaTypeVideo);
    return tracks.empty() ? nullptr : tracks.front();
}

} // namespace

ReverseCommand::ReverseCommand(ReverseOptions options)
    : m_options(std::move(options)), m_output(m_options.movie, m_options.force),
      m_scene(std::make_shared<UIWindowScene>()) {
    UIApplication::sharedApplication().setHost(this);
    UIApplication::sharedApplication().connectScene(m_scene);
}

ReverseCommand::~ReverseCommand() {
    UIApplication::sharedApplication().disconnectScene(m_scene);
    UIApplication::sharedApplication().setHost(nullptr);
}

void ReverseCommand::start(std::function<void(int)> ended) {
    m_ended = std::move(ended);
    m_progress.emplace(progressStyle(m_options));
    ViewHelper::showProgressHud("", UIWindow::makeInScene(m_scene));
    DispatchQueue::global(QualityOfService::userInteractive).async([this] {
        if (std::optional<std::string> message = obstacle())
            finished(false, std::move(message));
        else
            runEngine();
    });
}

void ReverseCommand::viewChanged(UIView&, double) {
    const JGProgressHUD& hud = ViewHelper::shared().hud();
    if (hud.isVisible())
        m_progress->update(hud.progress() / shareOfJob);
}

std::optional<std::string> ReverseCommand::obstacle() const {
    if (std::optional<std::string> message = m_output.obstacle())
        return message;
    // A clip that can't be read is the engine's to judge.
    const AVAssetTrackRef track = firstVideoTrack(URL::fileURLWithPath(m_options.clip));
    return track ? lackOfTemporarySpace(*track) : std::nullopt;
}

void ReverseCommand::runEngine() {
    m_encoder = std::make_unique<VideoEncoder>([this](float progress) {
        ++m_progressCalls;
        ViewHelper::updateProgress(progress);
    });
    m_encoder->reverseVideo(
        URL::fileURLWithPath(m_options.clip), m_output.partialUrl(), m_options.fileType,
        [this](bool success, std::optional<std::string> message) { finished(success, std::move(message)); },
        true);
}

void ReverseCommand::finished(bool success, std::optional<std::string> message) {
    // One call for each frame that was read and one for each that was to be written.
    const std::int64_t frames = m_progressCalls / 2;
    if (success)
        message = check(frames);
    if (!message)
        message = success ? m_output.putInPlace() : "The job failed";
    ViewHelper::hideHud();
    DispatchQueue::main().async([this, frames, message] {
        m_progress->clear();
        m_ended(message ? reportFailure(*message) : reportSuccess(frames));
    });
}

std::optional<std::string> ReverseCommand::check(std::int64_t frames) const {
    const AVAssetTrackRef track = firstVideoTrack(m_output.partialUrl());
    const std::int64_t written = track ? track->sampleCount() : 0;
    if (written == frames)
        return std::nullopt;
    return "Only " + std::to_string(written) + " of " + std::to_string(frames) +
           " frames could be kept: the temporary files found no room in " +
           TemporaryDirectory::current().path();
}

int ReverseCommand::reportFailure(const std::string& message) {
    if (m_options.json)
        printJsonLine({{"event", "result"}, {"success", false}, {"message", message}});
    std::cerr << message << std::endl;
    return ExitCode::jobFailed;
}

int ReverseCommand::reportSuccess(std::int64_t frames) {
    if (m_options.json)
        printJsonLine(
            {{"event", "result"}, {"success", true}, {"output", m_output.url().path()}, {"frames", frames}});
    else if (!m_options.quiet)
        std::cout << m_options.movie << ": " << frames << (frames == 1 ? " frame" : " frames")
                  << ", backwards" << std::endl;
    return ExitCode::done;
}

void ReverseCommand::interrupt(int exitCode) {
    m_progress.reset();
    TemporaryDirectory::removeByExec(exitCode, {m_output.partialUrl()});
}

} // namespace anadrome::terminal
