#include "Desktop/System/JobWatch.h"

#include "Desktop/DesktopHost.h"
#include "Desktop/Screens/AlertScreen.h"

namespace anadrome::desktop {

JobWatch::JobWatch(DesktopHost& host) : m_host(host) {
    connect(host.hud(), &Hud::changed, this, &JobWatch::look);
    for (const ScreenList* list : {host.stack(), host.presented()})
        connect(list, &ScreenList::countChanged, this, &JobWatch::look);
}

double JobWatch::progress() const {
    return m_host.hud()->progress();
}

void JobWatch::look() {
    const Hud& hud = *m_host.hud();
    if (hud.isVisible() && hud.kind() == "pie") {
        if (!std::exchange(m_isRunning, true))
            Q_EMIT started();
        Q_EMIT progressed();
    } else if (m_isRunning && !hud.isVisible()) {
        lookForEnd();
    }
}

/// Between two stages nothing lies over the Edit screen for a moment, so a HUD that went isn't the end yet.
void JobWatch::lookForEnd() {
    ShownScreen* over = m_host.presented()->top();
    const QString screen = m_host.stack()->top() ? m_host.stack()->top()->kind() : QString();
    if (const auto* alert = qobject_cast<AlertScreen*>(over)) {
        end();
        Q_EMIT failed(alert->message());
    } else if (over || screen == "Preview") { // an ad comes only before a movie
        end();
        Q_EMIT made();
    } else if (screen != "Edit") {
        end();
    }
}

void JobWatch::end() {
    m_isRunning = false;
    Q_EMIT ended();
}

} // namespace anadrome::desktop
