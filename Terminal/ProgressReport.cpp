#include "Terminal/ProgressReport.h"

#include "Terminal/JsonLine.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <sys/ioctl.h>
#include <unistd.h>

namespace anadrome::terminal {

namespace {

constexpr std::chrono::milliseconds interval(100);

int terminalWidth() {
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

/// "2:05 left", or nothing while it can't be told.
std::string leftText(const std::optional<std::chrono::seconds>& left) {
    if (!left)
        return {};
    char text[32];
    const long long seconds = left->count();
    std::snprintf(text, sizeof text, " %lld:%02lld left", seconds / 60, seconds % 60);
    return text;
}

} // namespace

void ProgressReport::update(double fraction) {
    m_fraction = std::clamp(fraction, m_fraction, 1.0);
    const auto now = TimeLeft::Clock::now();
    m_timeLeft.update(m_fraction, now);
    if (m_style == Style::none || now - m_lastShown < interval)
        return;
    m_lastShown = now;
    show();
}

void ProgressReport::finishing() {
    if (m_style == Style::none || std::exchange(m_isFinishing, true))
        return;
    if (m_style == Style::json)
        return printJsonLine({{"event", "finishing"}});
    m_fraction = 1;
    show();
}

void ProgressReport::show() {
    if (m_style == Style::json) {
        printLine();
        return;
    }
    drawBar();
    m_barOnScreen = true;
}

void ProgressReport::drawBar() const {
    const int percent = static_cast<int>(m_fraction * 100);
    const std::string tail = m_isFinishing ? " finishing" : leftText(m_timeLeft.estimate());
    const int room = std::clamp(terminalWidth() - 24, 10, 60);
    const int filled = static_cast<int>(m_fraction * room);
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(room - filled), '.');
    std::fprintf(stderr, "\r%3d%% [%s]%-12s", percent, bar.c_str(), tail.c_str());
    std::fflush(stderr);
}

void ProgressReport::printLine() const {
    nlohmann::json line{
        {"event", "progress"}, {"fraction", m_fraction}, {"percent", static_cast<int>(m_fraction * 100)}};
    line["secondsLeft"] = nullptr;
    if (const auto left = m_timeLeft.estimate())
        line["secondsLeft"] = left->count();
    printJsonLine(line);
}

void ProgressReport::clear() {
    if (std::exchange(m_barOnScreen, false))
        std::fputs("\r\033[K", stderr);
}

} // namespace anadrome::terminal
