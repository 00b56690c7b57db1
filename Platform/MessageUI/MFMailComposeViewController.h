#pragma once

#include "Platform/Foundation/NSError.h"
#include "Platform/UIKit/UIViewController.h"

#include <optional>
#include <string>

namespace anadrome {

class MFMailComposeViewController;

enum class MFMailComposeResult { cancelled = 0, saved = 1, sent = 2, failed = 3 };

/// Hears how a composer ended. It must dismiss the composer itself.
class MFMailComposeViewControllerDelegate {
public:
    virtual ~MFMailComposeViewControllerDelegate() = default;

    virtual void mailComposeControllerDidFinishWithResult(MFMailComposeViewController& composer,
                                                          MFMailComposeResult result,
                                                          const std::optional<NSError>& error) = 0;
};

/// A mail that the user may change and send. The front end hands it to the user's mail program.
class MFMailComposeViewController : public UIViewController {
public:
    /// Whether the user has a mail program. Without one no composer is to be presented.
    static bool canSendMail();

    /// Held weakly.
    void setMailComposeDelegate(std::weak_ptr<MFMailComposeViewControllerDelegate> delegate) {
        m_delegate = std::move(delegate);
    }

    const std::vector<std::string>& toRecipients() const { return m_toRecipients; }
    void setToRecipients(std::vector<std::string> addresses) { m_toRecipients = std::move(addresses); }
    const std::string& subject() const { return m_subject; }
    void setSubject(std::string subject) { m_subject = std::move(subject); }
    const std::string& messageBody() const { return m_messageBody; }
    bool isMessageBodyHTML() const { return m_isHTML; }
    void setMessageBody(std::string body, bool isHTML) {
        m_messageBody = std::move(body);
        m_isHTML = isHTML;
    }

    /// What became of the mail. Without effect while the composer isn't presented.
    void finish(MFMailComposeResult result, const std::optional<NSError>& error = std::nullopt);

private:
    std::weak_ptr<MFMailComposeViewControllerDelegate> m_delegate;
    std::vector<std::string> m_toRecipients;
    std::string m_subject;
    std::string m_messageBody;
    bool m_isHTML = false;
};

} // namespace anadrome
