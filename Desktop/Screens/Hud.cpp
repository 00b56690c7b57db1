#include "Desktop/Screens/Hud.h"

#include "Platform/UIKit/UIWindow.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome::desktop {

namespace {

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
        now = {true, kindOf(*hud.indicatorView()), hud.progress(),
               QString::fromStdString(hud.textLabel()->text()),
               QString::fromStdString(hud.detailTextLabel()->text())};
    if (now == m_shown)
        return;
    m_shown = std::move(now);
    Q_EMIT changed();
}

} // namespace anadrome::desktop
