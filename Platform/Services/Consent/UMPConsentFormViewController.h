#pragma once

#include "Platform/Services/Consent/UMPConsentQuestion.h"
#include "Platform/Services/Consent/UMPConsentState.h"
#include "Platform/UIKit/UIViewController.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace anadrome {

class UIButton;
class UILabel;
class UISwitch;

/// The form that asks for consent: the user accepts all, refuses all, or chooses purpose by purpose. Any of
/// these closes it. A front end shows its views; accept and refuse are to have the same weight.
///
/// The views are named consentTitle, consentMessage, consentAccept, consentRefuse, consentManage and
/// consentConfirm, those of the purposes' rows consentPurpose0Label, consentPurpose0Switch and so on; the
/// rows and consentConfirm are hidden until the user wants to choose.
class UMPConsentFormViewController : public UIViewController {
public:
    /// A purpose's name, and whether it is accepted; off at first.
    struct PurposeRow {
        std::shared_ptr<UILabel> label;
        std::shared_ptr<UISwitch> acceptance;
    };

    explicit UMPConsentFormViewController(UMPConsentQuestion question) : m_question(std::move(question)) {}

    /// Called at the user's answer, while the form is still there.
    void setAnswered(std::function<void(UMPConsentAnswers answers)> answered) {
        m_answered = std::move(answered);
    }
    /// Called on the main queue once the form has gone, also without an answer.
    void setDismissed(std::function<void()> dismissed) { m_dismissed = std::move(dismissed); }

    /// In the order of the question's purposes; empty until the view is loaded.
    const std::vector<PurposeRow>& purposeRows() const { return m_rows; }

protected:
    void viewDidLoad() override;
    void viewDidDisappear(bool animated) override;

private:
    void addLabel(const std::string& name, std::string text);
    std::shared_ptr<UIButton> addButton(const std::string& name, std::string title,
                                        void (UMPConsentFormViewController::*action)());
    void addRow(const UMPConsentPurpose& purpose);

    void acceptAll() { answerToAll(true); }
    void refuseAll() { answerToAll(false); }
    void manage();
    void confirm();
    void answerToAll(bool isAccepted);
    void finish(UMPConsentAnswers answers);

    const UMPConsentQuestion m_question;
    std::vector<PurposeRow> m_rows;
    std::shared_ptr<UIButton> m_manageButton;
    std::shared_ptr<UIButton> m_confirmButton;
    std::function<void(UMPConsentAnswers answers)> m_answered;
    std::function<void()> m_dismissed;
};

} // namespace anadrome
