#include "Desktop/System/JobWatch.h"

#include "Desktop/Screens/AlertScreen.h"
#include "Desktop/Screens/Hud.h"
#include "Desktop/Screens/ScreenList.h"

#include <chrono>

namespace anadrome::desktop {

namespace {

/// Between two stages nothing lies over the Edit screen for a moment. A job of which nothing is seen for so
/// much longer came to nothing, as when its dialog couldn't be shown.
constexpr std::chrono::seconds longestGap{1};

} // namespace

JobWatch::JobWatch(const Hud& hud, const ScreenList& stack, const ScreenList& presented)
    : m_hud(hud), m_stack(stack), m_presented(presented) {
    m_gap.setSingleShot(true);
    m_gap.setInterval(longestGap);
    connect(&m_gap, &QTimer::timeout, this, &JobWatch::end);
    connect(&hud, &Hud::changed, this, &JobWatch::look);
    for (const ScreenList* list : {&stack, &presented})
        connect(list, &ScreenList::countChanged, this, &JobWatch::look);
}

double JobWatch::progress() const {
    return m_hud.progress();
}

void JobWatch::look() {
    if (m_hud.isVisible())
        m_gap.stop();
    if (m_hud.isVisible() && m_hud.kind() == "pie") {
        if (!std::exchange(m_isRunning, true))
            Q_EMIT started();
        Q_EMIT progressed();
    } else if (m_isRunning && !m_hud.isVisible()) {
        lookForEnd();
    }
}

void JobWatch::lookForEnd() {
    ShownScreen* over = m_presented.top();
    const QString screen = m_stack.top() ? m_stack.top()->kind() : QString();
    if (const auto* alert = qobject_cast<AlertScreen*>(over)) {
        end();
        Q_EMIT failed(alert->message());
    } else if (screen == "Preview" || (over && over->kind() == "Ad")) { // an ad comes only before a movie
        end();
        Q_EMIT made();
    } else if (screen != "Edit") {
        end();
    } else if (!m_gap.isActive()) {
        m_gap.start();
    }
}

void JobWatch::end() {
    m_gap.stop();
    m_isRunning = false;
    Q_EMIT ended();
}

} // namespace anadrome::desktop
