#include "Terminal/Command.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/TemporaryDirectory.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIWindow.h"
#include "Platform/UIKit/UIWindowScene.h"
#include "Terminal/DiskSpace.h"
#include "Terminal/ExitCode.h"
#include "Terminal/FirstVideoTrack.h"
#include "Terminal/JsonLine.h"

#include <iostream>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

ProgressReport::Style progressStyle(const JobOptions& options) {
    if (options.json)
        return ProgressReport::Style::json;
    return !options.quiet && ::isatty(STDERR_FILENO) ? ProgressReport::Style::bar
                                                     : ProgressReport::Style::none;
}

} // namespace

Command::Command(const JobOptions& options)
    : m_options(options), m_clip(URL::fileURLWithPath(options.clip)), m_output(options.movie, options.force),
      m_progress(progressStyle(options)), m_scene(std::make_shared<UIWindowScene>()),
      m_window(UIWindow::makeInScene(m_scene)) {
    UIApplication::sharedApplication().setHost(this);
    UIApplication::sharedApplication().connectScene(m_scene);
    m_window->makeKeyAndVisible();
}

Command::~Command() {
    UIApplication::sharedApplication().disconnectScene(m_scene);
    UIApplication::sharedApplication().setHost(nullptr);
}

void Command::start(std::function<void(int)> ended) {
    m_ended = std::move(ended);
    DispatchQueue::global(QualityOfService::userInteractive).async([this] {
        if (std::string message = obstacle(); !message.empty())
            fail(std::move(message));
        else
            DispatchQueue::main().async([this] { run(); });
    });
}

std::string Command::obstacle() const {
    if (const std::optional<std::string> message = m_output.obstacle())
        return *message;
    // A clip that can't be read is the engine's to judge.
    const AVAssetTrackRef track = firstVideoTrack(m_clip);
    return track ? lackOfTemporarySpace(*track).value_or("") : "";
}

void Command::fail(std::string message) {
    DispatchQueue::main().async([this, message = std::move(message)] {
        m_progress.clear();
        if (m_options.json)
            printJsonLine({{"event", "result"}, {"success", false}, {"message", message}});
        std::cerr << message << std::endl;
        m_ended(ExitCode::jobFailed);
    });
}

void Command::succeed(std::int64_t frames, const std::string& content) {
    if (std::optional<std::string> message = m_output.putInPlace())
        return fail(*message);
    DispatchQueue::main().async([this, frames, content] {
        m_progress.clear();
        m_ended(report(frames, content) ? ExitCode::done : ExitCode::jobFailed);
    });
}

bool Command::report(std::int64_t frames, const std::string& content) const {
    if (m_options.json)
        printJsonLine(
            {{"event", "result"}, {"success", true}, {"output", m_output.url().path()}, {"frames", frames}});
    else if (!m_options.quiet)
        std::cout << m_options.movie << ": " << frames << (frames == 1 ? " frame, " : " frames, ") << content
                  << std::endl;
    if (!std::cout)
        std::cerr << "The movie is in its place, but the result couldn't be printed" << std::endl;
    return static_cast<bool>(std::cout);
}

void Command::interrupt(int exitCode) {
    m_progress.clear();
    TemporaryDirectory::removeByExec(exitCode, {m_output.partialUrl()});
}

} // namespace anadrome::terminal
