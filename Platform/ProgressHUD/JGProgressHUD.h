#pragma once

#include <functional>
#include <string>

namespace anadrome {

/// The busy overlay of a screen, as values: a front end draws it. Main thread only.
class JGProgressHUD {
public:
    /// Told of every change of a HUD. What it shows is asked of the HUD.
    using Observer = std::function<void(const JGProgressHUD& hud)>;

    /// The one front end that draws HUDs; an empty observer draws none.
    static void setObserver(Observer observer);

    float progress() const { return m_progress; }
    void setProgress(float progress);

    const std::string& detailText() const { return m_detailText; }
    void setDetailText(std::string text);

    bool isVisible() const { return m_isVisible; }
    void show();
    void dismiss();

private:
    void changed() const;

    float m_progress = 0;
    std::string m_detailText;
    bool m_isVisible = false;
};

} // namespace anadrome
