#pragma once

#include "Platform/UIKit/UIHost.h"
#include "Terminal/CommandLine.h"
#include "Terminal/OutputFile.h"
#include "Terminal/ProgressReport.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace anadrome {
class UIWindow;
class UIWindowScene;
} // namespace anadrome

namespace anadrome::terminal {

/// One job on one clip, from the checks before it to the movie in its place. It is the front end of what the
/// job shows, in a window that nobody sees. Main thread, with the event loop running.
class Command : protected UIHost {
public:
    explicit Command(const JobOptions& options);
    ~Command() override;

    /// Starts the work. `ended` gets the exit code later, on the main thread.
    void start(std::function<void(int exitCode)> ended);

    /// Takes the progress off the screen, sweeps what the work has left and ends the program. Never returns.
    [[noreturn]] void interrupt(int exitCode);

protected:
    /// Does the work; nothing that can be told beforehand stands in its way. Main thread. It ends in one call
    /// of succeed() or fail().
    virtual void run() = 0;

    /// Any thread. The movie is whole in output().partialUrl(); `content` says what it shows.
    void succeed(std::int64_t frames, const std::string& content);
    void fail(std::string message);

    const URL& clip() const { return m_clip; }
    const OutputFile& output() const { return m_output; }
    const std::shared_ptr<UIWindow>& window() const { return m_window; }
    ProgressReport& progress() { return m_progress; }

private:
    std::string obstacle() const;
    /// False if the result couldn't be printed.
    bool report(std::int64_t frames, const std::string& content) const;

    const JobOptions m_options;
    const URL m_clip;
    OutputFile m_output;
    ProgressReport m_progress;
    const std::shared_ptr<UIWindowScene> m_scene;
    const std::shared_ptr<UIWindow> m_window;
    std::function<void(int)> m_ended;
};

} // namespace anadrome::terminal
