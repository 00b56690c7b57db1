#include "Views/Settings/SettingsStoryboard.h"

#include "Views/Settings/SettingsViewController.h"

namespace anadrome {

UIStoryboardScene settingsStoryboard() {
    return UIStoryboardScene::ofController<SettingsViewController>()
        .add<UITableView>("tableView",
                          [](UITableView& table) {
                              table.registerCell("basic", [] { return std::make_shared<UITableViewCell>(); });
                          })
        .inNavigationController();
}

} // namespace anadrome
