#pragma once

#include <QObject>

namespace anadrome::desktop {

class DesktopHost;

/// Follows the making of a movie by what the host shows: from the pie that the Create button brings up to the
/// movie or the dialog. Main thread only.
class JobWatch : public QObject {
    Q_OBJECT

public:
    /// The host is to outlive it.
    explicit JobWatch(DesktopHost& host);

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

    DesktopHost& m_host;
    bool m_isRunning = false;
};

} // namespace anadrome::desktop
