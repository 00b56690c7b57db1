#include "Platform/Services/Consent/UMPConsentFormViewController.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UILabel.h"
#include "Platform/UIKit/UISwitch.h"

#include <utility>

namespace anadrome {

void UMPConsentFormViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    addLabel("consentTitle", NSLocalizedString("ConsentTitle"));
    addLabel("consentMessage",
             m_question.message.empty() ? NSLocalizedString("ConsentMessage") : m_question.message);
    for (const UMPConsentPurpose& purpose : m_question.purposes)
        addRow(purpose);
    using Form = UMPConsentFormViewController;
    addButton("consentAccept", NSLocalizedString("ConsentAccept"), &Form::acceptAll);
    addButton("consentRefuse", NSLocalizedString("ConsentRefuse"), &Form::refuseAll);
    m_manageButton = addButton("consentManage", NSLocalizedString("ConsentManage"), &Form::manage);
    m_manageButton->setHidden(m_rows.empty());
    m_confirmButton = addButton("consentConfirm", NSLocalizedString("ConsentConfirm"), &Form::confirm);
    m_confirmButton->setHidden(true);
}

void UMPConsentFormViewController::addLabel(const std::string& name, std::string text) {
    const auto label = std::make_shared<UILabel>();
    label->setAccessibilityIdentifier(name);
    label->setText(std::move(text));
    view()->addSubview(label);
}

std::shared_ptr<UIButton>
UMPConsentFormViewController::addButton(const std::string& name, std::string title,
                                        void (UMPConsentFormViewController::*action)()) {
    auto button = std::make_shared<UIButton>();
    button->setAccessibilityIdentifier(name);
    button->setTitle(std::move(title), UIControlState::normal);
    button->addAction(UIControlEvents::touchUpInside, [this, weak = weak_from_this(), action] {
        if (const auto alive = weak.lock())
            (this->*action)();
    });
    view()->addSubview(button);
    return button;
}

void UMPConsentFormViewController::addRow(const UMPConsentPurpose& purpose) {
    const PurposeRow row{std::make_shared<UILabel>(), std::make_shared<UISwitch>()};
    const std::string name = "consentPurpose" + std::to_string(m_rows.size());
    row.label->setAccessibilityIdentifier(name + "Label");
    row.acceptance->setAccessibilityIdentifier(name + "Switch");
    row.label->setText(purpose.name);
    row.label->setHidden(true);
    row.acceptance->setHidden(true);
    view()->addSubview(row.label);
    view()->addSubview(row.acceptance);
    m_rows.push_back(row);
}

void UMPConsentFormViewController::manage() {
    m_manageButton->setHidden(true);
    m_confirmButton->setHidden(false);
    for (const PurposeRow& row : m_rows) {
        row.label->setHidden(false);
        row.acceptance->setHidden(false);
    }
}

void UMPConsentFormViewController::answerToAll(bool isAccepted) {
    UMPConsentAnswers answers{isAccepted, {}};
    for (const UMPConsentPurpose& purpose : m_question.purposes)
        answers.byPurpose[purpose.identifier] = isAccepted;
    finish(std::move(answers));
}

void UMPConsentFormViewController::confirm() {
    UMPConsentAnswers answers{true, {}};
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const bool isAccepted = m_rows[i].acceptance->isOn();
        answers.byPurpose[m_question.purposes[i].identifier] = isAccepted;
        answers.isAllAccepted = answers.isAllAccepted && isAccepted;
    }
    finish(std::move(answers));
}

void UMPConsentFormViewController::finish(UMPConsentAnswers answers) {
    if (m_answered)
        m_answered(std::move(answers));
    dismissViewControllerAnimated(true);
}

void UMPConsentFormViewController::viewDidDisappear(bool animated) {
    UIViewController::viewDidDisappear(animated);
    if (auto dismissed = std::exchange(m_dismissed, nullptr))
        DispatchQueue::main().async(std::move(dismissed));
}

} // namespace anadrome
