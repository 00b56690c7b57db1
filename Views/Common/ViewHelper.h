#pragma once

#include "Platform/ProgressHUD/JGProgressHUD.h"

#include <memory>

namespace anadrome {

/// The one place that shows feedback over a screen. Operations may be called from any thread: each hops to
/// the main queue by itself and returns at once, and they take effect in the order of the calls.
class ViewHelper {
public:
    /// The shared instance, made on first use.
    static ViewHelper& shared();

    /// A pie with a percentage, which starts at 0.
    static void showProgressHud();
    /// Moves the pie to the fraction and shows it as a percentage, cut to a whole number. At 1 or more the
    /// HUD goes. A fraction that is no finite number is fatal.
    static void updateProgress(float progress);
    static void hideHud();

    /// The HUD now in use. Main thread only.
    JGProgressHUD& hud() { return *m_hud; }

private:
    ViewHelper() : m_hud(std::make_shared<JGProgressHUD>()) {}

    std::shared_ptr<JGProgressHUD> m_hud;
};

} // namespace anadrome
