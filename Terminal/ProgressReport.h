#pragma once

#include "Terminal/TimeLeft.h"

#include <memory>
#include <string>

namespace anadrome::terminal {

/// Shows how far a job is, in one of several ways, at most ten times a second. Main thread.
class ProgressReport {
public:
    /// Nothing; a bar on standard error; or JSON lines on standard output.
    enum class Style { none, bar, json };

    explicit ProgressReport(Style style) : m_style(style) {}
    /// Takes a bar off the screen.
    ~ProgressReport() { clear(); }
    ProgressReport(const ProgressReport&) = delete;
    ProgressReport& operator=(const ProgressReport&) = delete;

    /// A fraction from 0 to 1; one that falls behind an earlier one isn't shown.
    void update(double fraction);
    /// What is left to do can't be counted.
    void finishing();
    void clear();

private:
    void show();
    void drawBar() const;
    void printLine() const;

    const Style m_style;
    TimeLeft m_timeLeft;
    TimeLeft::Clock::time_point m_lastShown{};
    double m_fraction = 0;
    bool m_isFinishing = false;
    bool m_barOnScreen = false;
};

} // namespace anadrome::terminal
