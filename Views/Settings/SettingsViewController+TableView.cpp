// What the rows show and do.

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Deployment.h"
#include "Views/Settings/SettingsViewController.h"

namespace anadrome {

namespace {

struct Row {
    std::string text;
    const char* symbol;
};

Row rowAt(const NSIndexPath& path) {
    switch (path.section) {
    case 0:
        return {NSLocalizedString("ShareToFriends"), "square.and.arrow.up"};
    case 1:
        return path.row == 0 ? Row{NSLocalizedString("BugReport"), "ladybug"}
                             : Row{NSLocalizedString("Contact"), "envelope"};
    case 2:
        return path.row == 0 ? Row{NSLocalizedString("MoreApps"), "apps.iphone"}
                             : Row{NSLocalizedString("DeveloperBlog"), "newspaper"};
    case 3:
        return {NSLocalizedString("WriteReview"), "pencil"};
    default:
        fatalError("The Settings screen has no section " + std::to_string(path.section));
    }
}

} // namespace

long SettingsViewController::numberOfSectionsInTableView(UITableView&) {
    return 4;
}

long SettingsViewController::numberOfRowsInSection(UITableView&, long section) {
    switch (section) {
    case 0:
    case 3:
        return 1;
    case 1:
    case 2:
        return 2;
    default:
        return 0;
    }
}

std::shared_ptr<UITableViewCell> SettingsViewController::cellForRowAtIndexPath(UITableView& table,
                                                                               const NSIndexPath& path) {
    const Row row = rowAt(path);
    auto cell = table.dequeueReusableCellWithIdentifier("basic", path);
    cell->textLabel()->setText(row.text);
    UIImageRef image = UIImage::systemImageNamed(row.symbol);
    if (image)
        image = image->imageWithTintColor(UIColor::labelColor(), UIImageRenderingMode::alwaysOriginal);
    cell->imageView()->setImage(image);
    return cell;
}

void SettingsViewController::didSelectRowAtIndexPath(UITableView& table, const NSIndexPath& path) {
    table.deselectRowAtIndexPath(path, true);
    const Deployment& deployment = Deployment::current();
    switch (path.section) {
    case 0:
        return shareApp();
    case 1:
        if (path.row != 0 && path.row != 1)
            fatalError("The Settings screen has no such way to write");
        return writeFeedback(path.row);
    case 2:
        return path.row == 0 ? openLink("settings_more_apps", deployment.makerStorePage)
                             : openLink("settings_blog", deployment.makerWebSite);
    case 3:
        return openLink("settings_review", deployment.reviewPage());
    default:
        fatalError("The Settings screen has no section " + std::to_string(path.section));
    }
}

} // namespace anadrome
