#include "Desktop/Screens/AlertScreen.h"

#include "Platform/UIKit/UIAlertController.h"

namespace anadrome::desktop {

QString AlertScreen::title() const {
    const auto alert = controllerAs<UIAlertController>();
    return alert ? QString::fromStdString(alert->title()) : QString();
}

QString AlertScreen::message() const {
    const auto alert = controllerAs<UIAlertController>();
    return alert ? QString::fromStdString(alert->message()) : QString();
}

QStringList AlertScreen::actions() const {
    QStringList titles;
    if (const auto alert = controllerAs<UIAlertController>())
        for (const UIAlertAction& action : alert->actions())
            titles.append(QString::fromStdString(action.title));
    return titles;
}

void AlertScreen::choose(int index) {
    if (const auto alert = controllerAs<UIAlertController>())
        alert->chooseAction(static_cast<std::size_t>(index));
}

void AlertScreen::close() {
    const auto alert = controllerAs<UIAlertController>();
    if (!alert)
        return;
    const auto& actions = alert->actions();
    for (std::size_t index = 0; index < actions.size(); ++index)
        if (actions.size() == 1 || actions[index].style == UIAlertActionStyle::cancel)
            return alert->chooseAction(index);
}

} // namespace anadrome::desktop
