#include "Desktop/Screens/HandOver.h"

#include "Desktop/System/OtherPrograms.h"
#include "Platform/Dispatch/DispatchQueue.h"
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

/// A failure is told by a dialog over the screen.
HandOverTold errorOver(const std::shared_ptr<UIViewController>& screen, const char* key) {
    return [weak = std::weak_ptr(screen), key](HandOverOutcome outcome) {
        const auto screen = weak.lock();
        if (screen && outcome == HandOverOutcome::failed)
            ViewHelper::showError(screen, NSLocalizedString(key));
    };
}

void handOver(MFMailComposeViewController& composer) {
    composeMail(mailOf(composer), errorOver(composer.presentingViewController(), "FailedToOpenMail"));
    // What the user does with the mail, nobody tells, and mail programs may take their time.
    DispatchQueue::main().async([weak = composer.weak_from_this()] {
        if (const auto composer = std::dynamic_pointer_cast<MFMailComposeViewController>(weak.lock()))
            composer->finish(MFMailComposeResult::saved);
    });
}

void handOver(SKStoreProductViewController& sheet) {
    const HandOverTold told = errorOver(sheet.presentingViewController(), "FailedToOpenElsewhere");
    UIApplication::sharedApplication().openURL(sheet.productPage(), {}, [told](bool isOpened) {
        told(isOpened ? HandOverOutcome::done : HandOverOutcome::failed);
    });
    sheet.dismissViewControllerAnimated(false);
}

} // namespace

bool handOver(UIViewController& presented) {
    if (auto* composer = dynamic_cast<MFMailComposeViewController*>(&presented)) {
        handOver(*composer);
        return true;
    }
    if (auto* sheet = dynamic_cast<SKStoreProductViewController*>(&presented)) {
        handOver(*sheet);
        return true;
    }
    return false;
}

} // namespace anadrome::desktop
