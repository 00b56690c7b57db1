#include "Desktop/Screens/ConsentScreen.h"

namespace anadrome::desktop {

ConsentScreen::ConsentScreen(const std::shared_ptr<UIViewController>& controller, QString kind,
                             QObject* parent)
    : ShownScreen(controller, std::move(kind), parent) {
    for (const auto& [label, acceptance] : views().rows) {
        m_purposeLabels.append(add<LabelItem>(label));
        m_purposeSwitches.append(add<SwitchItem>(acceptance));
    }
}

} // namespace anadrome::desktop
