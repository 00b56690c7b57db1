#include "Desktop/Screens/Hud.h"

#include "Platform/UIKit/UIWindow.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome::desktop {

namespace {

// A job tells of every frame that it has read and written. Drawing each would take from the job's own time.
constexpr int timeBetweenAdvances = 100;

QString kindOf(const JGProgressHUDIndicatorView& indicator) {
    if (dynamic_cast<const JGProgressHUDPieIndicatorView*>(&indicator))
        return "pie";
    return dynamic_cast<const JGProgressHUDSuccessIndicatorView*>(&indicator) ? "tick" : "ring";
}

} // namespace

void Hud::update() {
    const JGProgressHUD& hud = ViewHelper::shared().hud();
    Shown now = m_shown;
    now.isVisible = hud.window() != nullptr;
    if (now.isVisible)
        now = {.isVisible = true,
               .kind = kindOf(*hud.indicatorView()),
               .progress = hud.progress(),
               .text = QString::fromStdString(hud.textLabel()->text()),
               .detail = QString::fromStdString(hud.detailTextLabel()->text()),
               .isLight = hud.style() != JGProgressHUDStyle::dark,
               .isVibrant = hud.vibrancyEnabled()};
    if (now == m_shown)
        return;
    const bool hasOnlyAdvanced = now.isVisible && m_shown.isVisible && now.kind == m_shown.kind;
    m_shown = std::move(now);
    if (!hasOnlyAdvanced)
        Q_EMIT changed();
    else if (!m_advance.isActive())
        m_advance.start(timeBetweenAdvances, this);
}

void Hud::timerEvent(QTimerEvent*) {
    m_advance.stop();
    Q_EMIT changed();
}

} // namespace anadrome::desktop
