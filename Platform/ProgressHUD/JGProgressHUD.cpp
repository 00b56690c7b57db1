#include "Platform/ProgressHUD/JGProgressHUD.h"

#include "Platform/Foundation/NSTimer.h"

#include <utility>

namespace anadrome {

JGProgressHUD::JGProgressHUD(JGProgressHUDStyle style) : m_style(style) {
    setIndicatorView(std::make_shared<JGProgressHUDIndeterminateIndicatorView>());
    addSubview(m_textLabel);
    addSubview(m_detailTextLabel);
}

std::vector<std::shared_ptr<JGProgressHUD>> JGProgressHUD::allProgressHUDsInView(const UIView& view) {
    std::vector<std::shared_ptr<JGProgressHUD>> huds;
    for (const auto& subview : view.subviews())
        if (auto hud = std::dynamic_pointer_cast<JGProgressHUD>(subview))
            huds.push_back(std::move(hud));
    return huds;
}

void JGProgressHUD::setIndicatorView(std::shared_ptr<JGProgressHUDIndicatorView> indicatorView) {
    if (m_indicatorView)
        m_indicatorView->removeFromSuperview();
    m_indicatorView = std::move(indicatorView);
    addSubview(m_indicatorView);
}

void JGProgressHUD::showInView(const std::shared_ptr<UIView>& view) {
    if (!isVisible())
        view->addSubview(shared_from_this());
}

void JGProgressHUD::dismissAfterDelay(double delay) {
    const auto self = std::static_pointer_cast<JGProgressHUD>(shared_from_this());
    NSTimer::scheduledTimerWithTimeInterval(delay, false, [watched = std::weak_ptr(self)](NSTimer&) {
        if (const auto hud = watched.lock())
            hud->dismiss();
    });
}

} // namespace anadrome
