#include "Desktop/Screens/TitleScreen.h"

namespace anadrome::desktop {

TitleScreen::TitleScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent)
    : ShownScreen(controller, std::move(kind), parent) {
    for (const TitleViews::App& app : views().apps) {
        m_appLabels.append(add<LabelItem>(app.label));
        m_appButtons.append(add<ButtonItem>(app.button));
    }
}

} // namespace anadrome::desktop
