#pragma once

#include "Terminal/Command.h"

#include <atomic>
#include <optional>

namespace anadrome {
class VideoEncoder;
}

namespace anadrome::terminal {

/// Runs the reverse stage alone.
class ReverseCommand : public Command {
public:
    explicit ReverseCommand(const ReverseOptions& options);
    ~ReverseCommand() override;

private:
    void run() override;
    /// Shows how far the HUD is.
    void viewChanged(UIView& view, double duration) override;

    void runEngine();
    void finished(bool success, std::optional<std::string> message);
    /// Counts what was written: frames that could not be saved are missing from the movie.
    std::optional<std::string> check(std::int64_t frames) const;

    const AVFileType m_fileType;
    std::unique_ptr<VideoEncoder> m_encoder;
    std::atomic<std::int64_t> m_progressCalls = 0;
};

} // namespace anadrome::terminal
