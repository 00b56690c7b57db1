#include "Desktop/Screens/HandOver.h"

#include "Desktop/System/OtherPrograms.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/MessageUI/MFMailComposeViewController.h"
#include "Platform/StoreKit/SKStoreProductViewController.h"
#include "Platform/UIKit/UIApplication.h"
#include "Views/Common/ViewHelper.h"

namespace anadrome::desktop {

namespace {

Mail mailOf(const MFMailComposeViewController& composer) {
    Mail mail{.subject = QString::fromStdString(composer.subject()),
              .text = QString::fromStdString(composer.messageBody())};
    for (const std::string& address : composer.toRecipients())
        mail.addresses.append(QString::fromStdString(address));
    return mail;
}

void handOver(MFMailComposeViewController& composer) {
    const std::weak_ptr<UIViewController> weak = composer.shared_from_this();
    composeMail(mailOf(composer), [weak](bool isOpened) {
        const auto composer = std::dynamic_pointer_cast<MFMailComposeViewController>(weak.lock());
        if (!composer)
            return;
        const auto screen = composer->presentingViewController();
        // What the user does with the mail, nobody tells.
        composer->finish(isOpened ? MFMailComposeResult::saved : MFMailComposeResult::failed);
        if (!isOpened && screen)
            ViewHelper::showError(screen, NSLocalizedString("FailedToOpenMail"));
    });
}

} // namespace

bool handOver(UIViewController& presented) {
    if (auto* composer = dynamic_cast<MFMailComposeViewController*>(&presented)) {
        handOver(*composer);
        return true;
    }
    if (const auto* sheet = dynamic_cast<SKStoreProductViewController*>(&presented)) {
        UIApplication::sharedApplication().openURL(sheet->productPage());
        presented.dismissViewControllerAnimated(false);
        return true;
    }
    return false;
}

} // namespace anadrome::desktop
