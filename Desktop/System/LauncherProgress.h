#pragma once

#include <QTimer>

namespace anadrome::desktop {

class JobWatch;

/// Shows how far a movie is on the program's entry in the desktop's taskbar or dock, where that knows how.
/// Main thread only.
class LauncherProgress {
public:
    /// The job is to outlive it.
    explicit LauncherProgress(const JobWatch& job);

private:
    struct Shown {
        bool isVisible = false;
        double progress = 0;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void follow();
    void tellIfChanged();

    const JobWatch& m_job;
    Shown m_told;
    QTimer m_pause;
};

} // namespace anadrome::desktop
