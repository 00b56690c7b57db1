#include "Views/Settings/SettingsStoryboard.h"

#include "Views/Settings/SettingsViewController.h"

namespace anadrome {

void buildSettingsViews(SettingsViewController& settings, UIView& root) {
    settings.m_tableView = root.addNew<UITableView>();
    settings.m_tableView->registerCell("basic", [] { return std::make_shared<UITableViewCell>(); });
}

UIStoryboardScene settingsStoryboard() {
    return UIStoryboardScene::ofController(buildSettingsViews).inNavigationController();
}

} // namespace anadrome
