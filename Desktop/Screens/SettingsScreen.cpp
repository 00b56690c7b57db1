#include "Desktop/Screens/SettingsScreen.h"

#include "Platform/Services/Deployment.h"
#include "Platform/UIKit/UINavigationController.h"
#include "Views/Settings/SettingsViewController.h"

#include <map>

namespace anadrome::desktop {

namespace {

SettingsViewController& settingsOn(const std::shared_ptr<UIViewController>& stack) {
    return dynamic_cast<SettingsViewController&>(
        *dynamic_cast<UINavigationController&>(*stack).topViewController());
}

bool leads(const TableRow& row) {
    const Deployment& deployment = Deployment::current();
    switch (row.section) {
    case 2:
        return !(row.row == 0 ? deployment.makerStorePage : deployment.makerWebSite).empty();
    case 3:
        return !deployment.reviewPage().empty();
    default:
        return true;
    }
}

} // namespace

SettingsScreen::SettingsScreen(const std::shared_ptr<UIViewController>& controller, QString kind,
                               QObject* parent)
    : ShownScreen(controller, std::move(kind), parent),
      tableView(add<TableItem>(settingsOn(controller).tableView())) {
    connect(tableView, &ViewItem::changed, this, &SettingsScreen::sectionsChanged);
}

QVariantList SettingsScreen::sections() const {
    std::map<int, QVariantList> sections;
    for (const TableRow& row : tableView->rows())
        if (leads(row))
            sections[row.section].append(QVariant::fromValue(row));
    QVariantList list;
    for (const auto& [section, rows] : sections)
        list.append(QVariant(rows));
    return list;
}

void SettingsScreen::close() {
    const auto stack = controllerAs<UINavigationController>();
    if (!stack)
        return;
    if (const auto done = stack->topViewController()->navigationItem().rightBarButtonItem())
        done->tap();
}

} // namespace anadrome::desktop
