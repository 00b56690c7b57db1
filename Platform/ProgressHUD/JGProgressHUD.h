#pragma once

#include "Platform/ProgressHUD/JGProgressHUDIndicatorView.h"
#include "Platform/UIKit/UILabel.h"

#include <memory>
#include <vector>

namespace anadrome {

enum class JGProgressHUDStyle { extraLight = 0, light = 1, dark = 2 };

/// The busy overlay of a screen: an indicator and two lines of text in front of all else in a view, whose
/// controls are out of reach meanwhile. Main thread only.
class JGProgressHUD : public UIView {
public:
    /// With the turning ring and without text.
    explicit JGProgressHUD(JGProgressHUDStyle style);

    /// The HUDs that are visible in a view, the rearmost first.
    static std::vector<std::shared_ptr<JGProgressHUD>> allProgressHUDsInView(const UIView& view);

    JGProgressHUDStyle style() const { return m_style; }
    /// Whether what lies beneath shines through; off at first.
    bool vibrancyEnabled() const { return m_vibrancyEnabled; }
    void setVibrancyEnabled(bool isEnabled) { change(m_vibrancyEnabled, isEnabled); }
    const std::shared_ptr<JGProgressHUDIndicatorView>& indicatorView() const { return m_indicatorView; }
    void setIndicatorView(std::shared_ptr<JGProgressHUDIndicatorView> indicatorView);
    const std::shared_ptr<UILabel>& textLabel() const { return m_textLabel; }
    const std::shared_ptr<UILabel>& detailTextLabel() const { return m_detailTextLabel; }

    /// Of the indicator.
    float progress() const { return m_indicatorView->progress(); }
    void setProgress(float progress) { m_indicatorView->setProgress(progress); }

    bool isVisible() const { return superview() != nullptr; }
    /// The view owns the HUD as long as it shows. Without effect on a visible HUD.
    void showInView(const std::shared_ptr<UIView>& view);
    /// Without effect on a HUD that isn't visible.
    void dismiss() { removeFromSuperview(); }
    /// Dismisses the HUD after that many seconds.
    void dismissAfterDelay(double delay);

protected:
    bool coversSiblings() const override { return true; }

private:
    const JGProgressHUDStyle m_style;
    bool m_vibrancyEnabled = false;
    std::shared_ptr<JGProgressHUDIndicatorView> m_indicatorView;
    const std::shared_ptr<UILabel> m_textLabel = std::make_shared<UILabel>();
    const std::shared_ptr<UILabel> m_detailTextLabel = std::make_shared<UILabel>();
};

} // namespace anadrome
