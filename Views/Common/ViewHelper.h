#pragma once

#include "Platform/ProgressHUD/JGProgressHUD.h"

#include <memory>
#include <optional>
#include <string>

namespace anadrome {

class UIViewController;

/// The one place that shows feedback over a screen. Unless told otherwise, operations may be called from any
/// thread: each hops to the main queue by itself and returns at once, and they take effect in the order of
/// the calls. What they are given is kept alive until then.
///
/// Each show operation makes a HUD of its own, which is then the one in use. The former isn't dismissed: if
/// it is still up it stays until its own time.
class ViewHelper {
public:
    /// The shared instance, made on first use.
    static ViewHelper& shared();

    /// A ring, for work without a known end.
    static void showHud(std::shared_ptr<UIView> view);
    /// A pie with a percentage, which starts at 0.
    static void showProgressHud(std::string text, std::shared_ptr<UIView> view);
    /// Moves the pie to the fraction and shows it as a percentage, cut to a whole number. At 1 or more the
    /// HUD goes. A fraction that is no finite number is fatal.
    static void updateProgress(float progress);
    /// A tick, which goes by itself after two seconds.
    static void showSuccessHud(std::shared_ptr<UIView> view, std::optional<std::string> text = std::nullopt);
    /// Dismisses the HUD in use.
    static void hideHud();

    /// A dialog with a message that is shown as it stands. It is presented on the controller whatever that
    /// shows already, so a second one at the same time is lost.
    static void showError(std::shared_ptr<UIViewController> controller, std::string message);
    /// The same at once. Main thread only.
    static void errorAlert(const std::string& message, UIViewController& controller);

    /// The screen on top of the key window, for code that has no controller at hand; null if there is none.
    /// Of a stack it is the root. Main thread only.
    static std::shared_ptr<UIViewController> topViewController();

    /// The HUD now in use. Main thread only.
    JGProgressHUD& hud() { return *m_hud; }

private:
    ViewHelper();

    /// Makes the HUD that is in use from now on.
    static JGProgressHUD& renew(JGProgressHUDStyle style);

    std::shared_ptr<JGProgressHUD> m_hud;
};

} // namespace anadrome
