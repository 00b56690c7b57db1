#pragma once

#include <QObject>

namespace anadrome::desktop {

class DesktopHost;

/// Tells in passing where a saved movie lies, as the tick goes. Main thread only.
class SavedNotice : public QObject {
    Q_OBJECT

public:
    /// The host is to outlive it.
    explicit SavedNotice(DesktopHost& host);

private:
    void look();

    DesktopHost& m_host;
    bool m_hasTick = false;
};

} // namespace anadrome::desktop
