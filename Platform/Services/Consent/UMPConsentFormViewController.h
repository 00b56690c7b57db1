#pragma once

#include "Platform/Services/Consent/UMPConsentQuestion.h"
#include "Platform/Services/Consent/UMPConsentState.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISwitch.h"
#include "Platform/UIKit/UIViewController.h"

#include <functional>
#include <memory>
#include <vector>

namespace anadrome {

/// The form that asks for consent: the user accepts all, refuses all, or chooses purpose by purpose. Any of
/// these closes it. A front end shows its views; accept and refuse are to have the same weight.
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

    /// The form's views. The rows, in the order of the question's purposes, and confirm are hidden until the
    /// user wants to choose.
    struct Views {
        std::shared_ptr<UILabel> title;
        std::shared_ptr<UILabel> message;
        std::vector<PurposeRow> rows;
        std::shared_ptr<UIButton> accept;
        std::shared_ptr<UIButton> refuse;
        std::shared_ptr<UIButton> manage;
        std::shared_ptr<UIButton> confirm;
    };
    /// Loads them first if need be.
    const Views& views() {
        view();
        return m_views;
    }

protected:
    void viewDidLoad() override;
    void viewDidDisappear(bool animated) override;

private:
    std::shared_ptr<UILabel> addLabel(std::string text);
    std::shared_ptr<UIButton> addButton(const char* titleKey, void (UMPConsentFormViewController::*action)());
    void addRow(const UMPConsentPurpose& purpose);

    void acceptAll() { answerToAll(true); }
    void refuseAll() { answerToAll(false); }
    void manage();
    void confirm();
    void answerToAll(bool isAccepted);
    void finish(UMPConsentAnswers answers);

    const UMPConsentQuestion m_question;
    Views m_views;
    std::function<void(UMPConsentAnswers answers)> m_answered;
    std::function<void()> m_dismissed;
};

} // namespace anadrome
