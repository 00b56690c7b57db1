#include "Platform/Services/Consent/UMPConsentForm.h"

#include "Platform/Dispatch/DispatchQueue.h"
#include "Platform/Services/Consent/UMPConsentFormViewController.h"
#include "Platform/Services/Consent/UMPConsentInformation.h"
#include "Platform/Services/Consent/UMPError.h"

namespace anadrome {

namespace {

void completeLater(const UMPConsentForm::Completion& completion,
                   const std::optional<NSError>& error = std::nullopt) {
    DispatchQueue::main().async([completion, error] { completion(error); });
}

/// Why it can't be shown, if it can't.
std::optional<NSError> present(const UMPConsentQuestion& question, UIViewController& controller,
                               const UMPConsentForm::Completion& completion) {
    const auto form = std::make_shared<UMPConsentFormViewController>(question);
    form->setAnswered([](UMPConsentAnswers answers) {
        UMPConsentInformation::sharedInstance().takeAnswers(std::move(answers));
    });
    form->setDismissed([completion] { completion(std::nullopt); });
    controller.presentViewController(form, true);
    if (controller.presentedViewController() == form)
        return std::nullopt;
    return NSError(UMPErrorDomain, UMPFormErrorCodeInvalidViewController,
                   "The screen can't show the consent form now.");
}

} // namespace

void UMPConsentForm::loadAndPresentIfRequiredFromViewController(UIViewController& controller,
                                                                Completion completion) {
    const UMPConsentInformation& information = UMPConsentInformation::sharedInstance();
    if (information.consentStatus() == UMPConsentStatus::notRequired ||
        information.consentStatus() == UMPConsentStatus::obtained)
        return completeLater(completion);
    if (!information.question())
        return completeLater(completion, NSError(UMPErrorDomain, UMPFormErrorCodeUnavailable,
                                                 "The consent server hasn't said what to ask."));
    if (const auto error = present(*information.question(), controller, completion))
        completeLater(completion, error);
}

} // namespace anadrome
