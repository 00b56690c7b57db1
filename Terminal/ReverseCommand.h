#pragma once

#include "Platform/UIKit/UIHost.h"
#include "Terminal/CommandLine.h"
#include "Terminal/OutputFile.h"
#include "Terminal/ProgressReport.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace anadrome {
class UIWindowScene;
class VideoEncoder;
} // namespace anadrome

namespace anadrome::terminal {

/// Runs the reverse stage alone on one clip. Main thread, with the event loop running.
class ReverseCommand : private UIHost {
public:
    explicit ReverseCommand(ReverseOptions options);
    ~ReverseCommand() override;

    /// Starts the work. `ended` gets the exit code later, on the main thread.
    void start(std::function<void(int exitCode)> ended);

    /// Takes the progress off the screen, sweeps what the work has left and ends the program. Never returns.
    [[noreturn]] void interrupt(int exitCode);

private:
    /// Shows how far the HUD is.
    void viewChanged(UIView& view, double duration) override;
    /// Why the work can't be done, if that can be told beforehand.
    std::optional<std::string> obstacle() const;
    void runEngine();
    void finished(bool success, std::optional<std::string> message);
    /// Counts what was written: frames that found no room on the disk are missing from the movie.
    std::optional<std::string> check(std::int64_t frames) const;
    int reportFailure(const std::string& message);
    int reportSuccess(std::int64_t frames);

    const ReverseOptions m_options;
    OutputFile m_output;
    std::optional<ProgressReport> m_progress;
    /// Stands for the screen that the HUD lies over.
    const std::shared_ptr<UIWindowScene> m_scene;
    std::unique_ptr<VideoEncoder> m_encoder;
    std::atomic<std::int64_t> m_progressCalls = 0;
    std::function<void(int)> m_ended;
};

} // namespace anadrome::terminal
