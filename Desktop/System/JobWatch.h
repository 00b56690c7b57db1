#pragma once

#include <QObject>
#include <QTimer>

namespace anadrome::desktop {

class Hud;
class ScreenList;

/// Follows the making of a movie by what is shown: from the pie that the Create button brings up to the
/// movie or the dialog. Main thread only.
class JobWatch : public QObject {
    Q_OBJECT

public:
    /// All are to outlive it.
    JobWatch(const Hud& hud, const ScreenList& stack, const ScreenList& presented);

    bool isRunning() const { return m_isRunning; }
    /// From 0 to 1.
    double progress() const;

Q_SIGNALS:
    void started();
    void progressed();
    /// However it went; then it isn't running any more. One of the two below may follow.
    void ended();
    void made();
    void failed(const QString& message);

private:
    void look();
    void lookForEnd();
    void end();

    const Hud& m_hud;
    const ScreenList& m_stack;
    const ScreenList& m_presented;
    bool m_isRunning = false;
    QTimer m_gap;
};

} // namespace anadrome::desktop
