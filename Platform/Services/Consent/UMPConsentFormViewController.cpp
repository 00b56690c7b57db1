#include "Platform/Services/Consent/UMPConsentFormViewController.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Foundation/NSBundle.h"

#include <utility>

namespace anadrome {

void UMPConsentFormViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    m_views.title = addLabel(NSLocalizedString("ConsentTitle"));
    m_views.message =
        addLabel(m_question.message.empty() ? NSLocalizedString("ConsentMessage") : m_question.message);
    for (const UMPConsentPurpose& purpose : m_question.purposes)
        addRow(purpose);
    using Form = UMPConsentFormViewController;
    m_views.accept = addButton("ConsentAccept", &Form::acceptAll);
    m_views.refuse = addButton("ConsentRefuse", &Form::refuseAll);
    m_views.manage = addButton("ConsentManage", &Form::manage);
    m_views.manage->setHidden(m_views.rows.empty());
    m_views.confirm = addButton("ConsentConfirm", &Form::confirm);
    m_views.confirm->setHidden(true);
}

std::shared_ptr<UILabel> UMPConsentFormViewController::addLabel(std::string text) {
    auto label = view()->addNew<UILabel>();
    label->setText(std::move(text));
    return label;
}

std::shared_ptr<UIButton>
UMPConsentFormViewController::addButton(const char* titleKey,
                                        void (UMPConsentFormViewController::*action)()) {
    auto button = view()->addNew<UIButton>();
    button->setTitle(NSLocalizedString(titleKey), UIControlState::normal);
    button->addTarget(*this, action, UIControlEvents::touchUpInside);
    return button;
}

void UMPConsentFormViewController::addRow(const UMPConsentPurpose& purpose) {
    const PurposeRow row{addLabel(purpose.name), view()->addNew<UISwitch>()};
    row.label->setHidden(true);
    row.acceptance->setHidden(true);
    m_views.rows.push_back(row);
}

void UMPConsentFormViewController::manage() {
    m_views.manage->setHidden(true);
    m_views.confirm->setHidden(false);
    for (const PurposeRow& row : m_views.rows) {
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
    for (std::size_t i = 0; i < m_views.rows.size(); ++i) {
        const bool isAccepted = m_views.rows[i].acceptance->isOn();
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
