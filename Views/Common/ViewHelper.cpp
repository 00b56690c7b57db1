#include "Views/Common/ViewHelper.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/Print.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace anadrome {

ViewHelper& ViewHelper::shared() {
    static ViewHelper instance;
    return instance;
}

void ViewHelper::showProgressHud() {
    DispatchQueue::main().async([] {
        auto hud = std::make_shared<JGProgressHUD>();
        shared().m_hud = hud;
        hud->setDetailText("0%");
        hud->show();
    });
}

void ViewHelper::updateProgress(float progress) {
    DispatchQueue::main().async([progress] {
        JGProgressHUD& hud = shared().hud();
        hud.setProgress(progress);
        const float percent = progress * 100;
        constexpr float limit = 9223372036854775808.0F;
        if (!std::isfinite(percent) || percent >= limit || percent < -limit)
            fatalError("updateProgress: the fraction is no number that can be shown");
        hud.setDetailText(std::to_string(static_cast<std::int64_t>(percent)) + "%");
        if (progress >= 1.0F)
            hud.dismiss();
    });
}

void ViewHelper::hideHud() {
    DispatchQueue::main().async([] { shared().hud().dismiss(); });
}

} // namespace anadrome
