#include "Platform/MessageUI/MFMailComposeViewController.h"

#include "Platform/UIKit/UIApplication.h"
#include "Platform/UIKit/UIHost.h"

namespace anadrome {

bool MFMailComposeViewController::canSendMail() {
    const UIHost* host = UIApplication::sharedApplication().host();
    return host && host->canSendMail();
}

void MFMailComposeViewController::finish(MFMailComposeResult result, const std::optional<NSError>& error) {
    if (!presentingViewController())
        return;
    if (const auto delegate = m_delegate.lock())
        delegate->mailComposeControllerDidFinishWithResult(*this, result, error);
}

} // namespace anadrome
