#include "Views/Settings/SettingsViewController.h"

#include "Platform/Foundation/NSBundle.h"
#include "Platform/Foundation/Print.h"
#include "Platform/Services/Deployment.h"
#include "Platform/Services/Measuring/FIRAnalytics.h"
#include "Platform/UIKit/UIActivityViewController.h"
#include "Platform/UIKit/UIAlertController.h"
#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIDevice.h"
#include "Views/Common/StoreTexts.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome {

namespace {

constexpr CGFloat rowHeight = 44.0;

} // namespace

std::shared_ptr<SettingsViewController> SettingsViewController::self() {
    return std::static_pointer_cast<SettingsViewController>(shared_from_this());
}

void SettingsViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setRightBarButtonItem(
        std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::done, [weak = std::weak_ptr(self())] {
            if (const auto self = weak.lock())
                self->doneTapped();
        }));
    m_tableView->setDataSource(self());
    m_tableView->setDelegate(self());
    m_tableView->setRowHeight(rowHeight);
}

void SettingsViewController::viewWillAppear(bool animated) {
    UIViewController::viewWillAppear(animated);
    m_tableView->reloadData();
}

void SettingsViewController::doneTapped() {
    dismissViewControllerAnimated(true);
}

void SettingsViewController::shareApp() {
    FIRAnalytics::logEventWithName("settings_share");
    const std::vector<UIActivityViewController::Item> items{recommendation()};
    presentViewController(std::make_shared<UIActivityViewController>(items), true);
}

void SettingsViewController::writeFeedback(long row) {
    if (!MFMailComposeViewController::canSendMail())
        return tellThatMailFails();
    FIRAnalytics::logEventWithName("settings_feedback_success");
    const std::string subject =
        std::string(row == 1 ? "Inquiry About" : "Bug report -") + " " + NSLocalizedString("AppName");
    const auto composer = std::make_shared<MFMailComposeViewController>();
    composer->setMailComposeDelegate(self());
    if (const std::string& address = Deployment::current().feedbackMailAddress; !address.empty())
        composer->setToRecipients({address});
    composer->setSubject(subject);
    const UIDevice& device = UIDevice::currentDevice();
    composer->setMessageBody("\n\n" + device.name() + "\n" + device.systemVersion(), false);
    presentViewController(composer, true);
}

void SettingsViewController::tellThatMailFails() {
    FIRAnalytics::logEventWithName("settings_feedback_failed");
    print("送信できません");
    const auto alert = std::make_shared<UIAlertController>(
        NSLocalizedString("Error"), NSLocalizedString("FailedToOpenMail"), UIAlertControllerStyle::alert);
    alert->addAction({"OK", UIAlertActionStyle::normal, {}});
    presentViewController(alert, true);
}

void SettingsViewController::mailComposeControllerDidFinishWithResult(MFMailComposeViewController& composer,
                                                                      MFMailComposeResult,
                                                                      const std::optional<NSError>&) {
    composer.dismissViewControllerAnimated(true);
}

void SettingsViewController::openLink(const std::string& event, const std::string& address) {
    FIRAnalytics::logEventWithName(event);
    if (address.empty())
        return ViewHelper::showError(self(), NSLocalizedString("PageIsMissing"));
    UIApplication::sharedApplication().openURL(address);
}

} // namespace anadrome
